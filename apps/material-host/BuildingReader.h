#pragma once

#include "Building.h"

#include <QJsonArray>

/// Reads the "building" object of a project. What is wrong is told with the place where it stands; a building is read
/// whole or not at all.
class BuildingReader {
public:
    /// `language`: "zh" or "en", in which names are shown.
    explicit BuildingReader(QString language) : m_language(std::move(language)) {}

    bool read(const QJsonObject& json, Building& building);
    const QString& reason() const { return m_reason; }

private:
    bool readGroups(const QJsonArray& json, Building& building);
    bool readElements(const QJsonArray& json, Building& building);
    bool readElement(const QJsonObject& json, const Building& building, BuildingElement& element);
    bool readSolids(const QJsonArray& json, BuildingElement& element);
    bool readSolid(const QJsonObject& json, BuildingSolid& solid);
    bool readColours(const QJsonValue& json, BuildingElement& element);
    bool readOutline(const QJsonArray& json, QPainterPath& outline);
    bool readShape(const QJsonObject& json, QPainterPath& shape);
    bool repeatShape(const QJsonArray& json, QPainterPath& shape);
    bool readNumbers(const QJsonValue& json, int count, QVector<double>& numbers);
    bool readPolygon(const QJsonArray& json, QPainterPath& shape);
    bool readText(const QJsonValue& json, QString& text);
    bool refuse(const QString& reason);

    QString m_language;
    int m_points = 0;
    QString m_place;
    QString m_reason;
};
