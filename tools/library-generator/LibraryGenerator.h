#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <functional>
#include <string>

struct GeneratorOptions {
    int count = 1000;
    /// Folder of template documents, empty for the shipped ones as this build staged them (target material_data). Every
    /// template with a "diffuse_texture" is a type of appearance.
    QString templates = {};
    /// What a document is padded to with tags, about; a document without tags takes some 1,100.
    int bytes = 2048;
    quint64 seed = 1;
};

/// Makes varied appearances over all types and over categories up to three levels deep, for measurements and tests. The
/// same options give the same bytes everywhere, and document i depends on templates, bytes and seed only, so that a
/// larger library begins with the smaller one's appearances. All values lie in the ranges that their templates declare.
class CLibraryGenerator {
public:
    /// Reads the templates. Without any there are no documents: see GetError().
    explicit CLibraryGenerator(const GeneratorOptions& options);

    /// Why there is nothing to generate; empty when there is.
    const QString& GetError() const { return m_error; }

    /// Appearance i as compact UTF-8 JSON, i from 0 to count - 1.
    QByteArray Document(int index) const;

    /// The library file in pieces, in order. False as soon as the sink answers false.
    bool WriteLibrary(const std::function<bool(const QByteArray&)>& sink) const;

private:
    struct Parameter {
        QString key;
        QString type;
        double min = 0;
        double max = 1;
    };
    struct Type {
        QString name;
        QVector<Parameter> parameters;
    };

    void readTemplate(const QByteArray& json);
    static QVector<Parameter> readParameters(const QJsonObject& parameters);

    GeneratorOptions m_options;
    QVector<Type> m_types;
    QString m_error;
};

/// The whole library file; empty when the options hold no templates.
std::string GenerateLibrary(const GeneratorOptions& options);
