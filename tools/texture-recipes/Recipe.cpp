#include "Recipe.h"

#include "Families.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

namespace {

QJsonObject readObject(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RecipeError("cannot be read: " + file.errorString().toStdString());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isObject())
        throw RecipeError("is no JSON object: " + error.errorString().toStdString());
    return document.object();
}

void checkSize(const QJsonValue& value)
{
    const QJsonArray size = value.toArray();
    if (size.size() != 2 || size[0].toDouble() <= 0 || size[1].toDouble() <= 0)
        throw RecipeError("\"size\" is no pair of lengths in metres");
}

void save(const QImage& image, const QString& path)
{
    constexpr int FastCompression = 75;  // noise hardly gets smaller, however long one tries
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !image.save(&file, "PNG", FastCompression) || !file.commit())
        throw RecipeError("cannot be written to " + path.toStdString());
}

/// 0 for a texture without relief, which has no such key: the build knows from it whether to expect a normal map.
float normalStrength(const QJsonValue& value)
{
    if (value.isUndefined())
        return 0;
    const double strength = value.toDouble();
    if (strength <= 0 || strength > 10)
        throw RecipeError("\"normals\" is no number above 0 and up to 10");
    return float(strength);
}

QJsonObject parametersOf(const QJsonValue& value)
{
    if (!value.isUndefined() && !value.isObject())
        throw RecipeError("\"parameters\" is no JSON object");
    return value.toObject();
}

void make(const QString& recipeFile, const QString& folder, int pixels, bool withNormals)
{
    const QJsonObject recipe = readObject(recipeFile);
    for (const QString& key : recipe.keys()) {
        if (!QStringList{"family", "size", "normals", "parameters"}.contains(key))
            throw RecipeError("\"" + key.toStdString() + "\" is no part of a recipe");
    }
    checkSize(recipe["size"]);
    const float strength = normalStrength(recipe["normals"]);
    const Parameters parameters(parametersOf(recipe["parameters"]));
    const Picture picture = drawFamily(recipe["family"].toString(), parameters, pixels);
    parameters.checkAllUsed();

    const QString base = folder + QLatin1Char('/') + QFileInfo(recipeFile).completeBaseName();
    save(picture.color(), base + QStringLiteral(".png"));
    if (withNormals && strength > 0)
        save(picture.normals(strength), base + QStringLiteral("_normal.png"));
}

}  // namespace

RecipeResult makeTexture(const QString& recipeFile, const QString& folder, int pixels, bool withNormals)
{
    try {
        make(recipeFile, folder, pixels, withNormals);
        return {};
    } catch (const RecipeError& error) {
        return {QFileInfo(recipeFile).fileName() + QStringLiteral(": ") + QString::fromStdString(error.what())};
    }
}
