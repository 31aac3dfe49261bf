#pragma once

#include "Picture.h"

#include <QJsonObject>

#include <stdexcept>

/// What is wrong with a recipe; the tool names the file and ends.
struct RecipeError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The parameters of a recipe by name. A missing one has the family's own value; one of the wrong kind or out of its
/// range throws RecipeError, and so does one that no family asked for (checkAllUsed), since it is a slip of the pen.
class Parameters {
public:
    explicit Parameters(const QJsonObject& object) : m_object(object) {}

    float number(const char* key, float otherwise, float least = 0, float most = 1000) const;
    int whole(const char* key, int otherwise, int least = 1, int most = 4096) const;
    QString text(const char* key, const char* otherwise) const;
    bool flag(const char* key, bool otherwise) const;
    Rgb color(const char* key, const char* otherwise) const;
    std::vector<Rgb> colors(const char* key, const QStringList& otherwise) const;

    void checkAllUsed() const;

private:
    QJsonValue value(const char* key) const;

    QJsonObject m_object;
    mutable QStringList m_used;
};
