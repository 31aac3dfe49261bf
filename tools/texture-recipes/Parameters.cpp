#include "Parameters.h"

#include <QColor>
#include <QJsonArray>

namespace {

[[noreturn]] void refuse(const char* key, const QString& reason)
{
    throw RecipeError(QStringLiteral("\"%1\" %2").arg(QLatin1String(key), reason).toStdString());
}

Rgb toColor(const char* key, const QString& name)
{
    const QColor color(name);
    if (!color.isValid())
        refuse(key, QStringLiteral("\"%1\" is no colour").arg(name));
    return {float(color.redF()), float(color.greenF()), float(color.blueF())};
}

}  // namespace

QJsonValue Parameters::value(const char* key) const
{
    m_used.append(QLatin1String(key));
    return m_object.value(QLatin1String(key));
}

float Parameters::number(const char* key, float otherwise, float least, float most) const
{
    const QJsonValue found = value(key);
    if (found.isUndefined())
        return otherwise;
    const double number = found.toDouble(double(least) - 1);
    if (!found.isDouble() || number < double(least) || number > double(most))
        refuse(key, QStringLiteral("is no number from %1 to %2").arg(double(least)).arg(double(most)));
    return float(number);
}

int Parameters::whole(const char* key, int otherwise, int least, int most) const
{
    const float number = this->number(key, float(otherwise), float(least), float(most));
    if (number != std::floor(number))
        refuse(key, QStringLiteral("is no whole number"));
    return int(number);
}

QString Parameters::text(const char* key, const char* otherwise) const
{
    const QJsonValue found = value(key);
    if (!found.isUndefined() && !found.isString())
        refuse(key, QStringLiteral("is no text"));
    return found.toString(QLatin1String(otherwise));
}

bool Parameters::flag(const char* key, bool otherwise) const
{
    const QJsonValue found = value(key);
    if (!found.isUndefined() && !found.isBool())
        refuse(key, QStringLiteral("is neither true nor false"));
    return found.toBool(otherwise);
}

Rgb Parameters::color(const char* key, const char* otherwise) const
{
    return toColor(key, text(key, otherwise));
}

std::vector<Rgb> Parameters::colors(const char* key, const QStringList& otherwise) const
{
    const QJsonValue found = value(key);
    QStringList names;
    for (const auto& name : found.toArray())
        names.append(name.toString());
    if (found.isUndefined())
        names = otherwise;
    if (names.isEmpty())
        refuse(key, QStringLiteral("is no list of colours"));
    std::vector<Rgb> colors;
    for (const QString& name : names)
        colors.push_back(toColor(key, name));
    return colors;
}

void Parameters::checkAllUsed() const
{
    for (const QString& key : m_object.keys()) {
        if (!m_used.contains(key))
            refuse(key.toUtf8().constData(), QStringLiteral("is no parameter of this family"));
    }
}
