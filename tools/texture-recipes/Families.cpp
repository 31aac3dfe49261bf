#include "Families.h"

#include <QMap>

Picture drawFamily(const QString& family, const Parameters& parameters, int size)
{
    static const QMap<QString, Picture (*)(const Parameters&, int)> families{
        {"masonry", drawMasonry}, {"surface", drawSurface}, {"stone", drawStone},     {"aggregate", drawAggregate},
        {"metal", drawMetal},     {"sheet", drawSheet},     {"textile", drawTextile}, {"wallpaper", drawWallpaper},
        {"leather", drawLeather}, {"strokes", drawStrokes}, {"glass", drawGlass},     {"measure", drawMeasure}};
    const auto draw = families.value(family, nullptr);
    if (!draw)
        throw RecipeError("\"family\" is none of " +
                          QStringList(families.keys()).join(QStringLiteral(", ")).toStdString());
    return draw(parameters, size);
}
