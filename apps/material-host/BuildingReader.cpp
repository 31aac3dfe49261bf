#include "BuildingReader.h"

#include "PathGeometry.h"

#include <QCoreApplication>

#include <cmath>

namespace {

constexpr int MaxElements = 1000;
constexpr int MaxShapes = 500;
constexpr int MaxPoints = 2000;
constexpr int MaxOutlinePoints = 20000;  // joining outlines takes more than their points' time
constexpr int MaxBuildingPoints = 200000;
constexpr double MaxLength = 1000;  // metres

QString say(const char* text)
{
    return QCoreApplication::translate("BuildingReader", text);
}

}  // namespace

bool BuildingReader::read(const QJsonObject& json, Building& building)
{
    Building read;
    read.source = json;
    m_points = 0;
    QVector<double> extent;
    m_place = "building";
    if (!readText(json["name"], read.name) || !readNumbers(json["extent"], 4, extent))
        return false;
    read.extent = {extent[0], extent[1], extent[2], extent[3]};
    if (read.extent.width() <= 0 || read.extent.height() <= 0)
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "the extent is empty")));
    if (!readGroups(json["groups"].toArray(), read) || !readElements(json["elements"].toArray(), read))
        return false;
    building = read;
    return true;
}

bool BuildingReader::readGroups(const QJsonArray& json, Building& building)
{
    for (const QJsonValue& value : json) {
        m_place = QString("building/groups/%1").arg(building.groups.size());
        BuildingGroup group;
        group.id = value["id"].toString();
        if (!readText(value["name"], group.name))
            return false;
        building.groups.append(group);
    }
    return true;
}

bool BuildingReader::readElements(const QJsonArray& json, Building& building)
{
    m_place = "building/elements";
    if (json.isEmpty() || json.size() > MaxElements)
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "expected 1 to 1000 elements")));
    for (const QJsonValue& value : json) {
        BuildingElement element;
        m_place = QString("building/elements/%1").arg(building.elements.size());
        if (!readElement(value.toObject(), building, element))
            return false;
        building.elements.append(element);
    }
    std::stable_sort(building.elements.begin(), building.elements.end(),
                     [](const BuildingElement& a, const BuildingElement& b) { return a.depth < b.depth; });
    return true;
}

bool BuildingReader::readElement(const QJsonObject& json, const Building& building, BuildingElement& element)
{
    element.id = json["id"].toString();
    if (element.id.isEmpty())
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "an element has no id")));
    if (building.find(element.id))
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "the id \"%1\" occurs twice")).arg(element.id));
    m_place += " (" + element.id + ")";
    element.group = json["group"].toString();
    element.startMaterial = json["material"].toString();
    element.depth = qBound(-MaxLength, json["depth"].toDouble(0), MaxLength);
    element.tilt = qBound(0.05, json["tilt"].toDouble(1), 1.0);
    element.round = json["round"].toBool();
    element.casts = json["casts"].toBool(true);
    element.receives = json["receives"].toBool(true);
    if (element.takesMaterial() ? !readText(json["name"], element.name) : !readColours(json["colours"], element))
        return false;
    return readOutline(json["shapes"].toArray(), element.outline) && readSolids(json["solids"].toArray(), element);
}

bool BuildingReader::readSolids(const QJsonArray& json, BuildingElement& element)
{
    if (json.size() > MaxShapes)
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "expected at most 500 solids")));
    for (const QJsonValue& value : json) {
        BuildingSolid solid;
        solid.outline = element.outline;
        if (!readSolid(value.toObject(), solid))
            return false;
        element.solids.append(solid);
    }
    return true;
}

bool BuildingReader::readSolid(const QJsonObject& json, BuildingSolid& solid)
{
    QVector<double> n;
    if (!readNumbers(QJsonArray{json["front"], json["back"], json["lean"].toDouble(), json["backLean"].toDouble()}, 4,
                     n))
        return false;
    solid.front = n[0];
    solid.back = n[1];
    solid.lean = n[2];
    solid.backLean = n[3];
    if (solid.front <= solid.back)
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "a solid's front is not in front of its back")));
    if (json.contains("shapes"))
        return readOutline(json["shapes"].toArray(), solid.outline);
    m_points += solid.outline.elementCount();
    return m_points <= MaxBuildingPoints ||
           refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "the shapes have too many points")));
}

bool BuildingReader::readColours(const QJsonValue& json, BuildingElement& element)
{
    element.top = QColor(json[0].toString());
    element.bottom = QColor(json[1].toString());
    if (element.top.isValid() && element.bottom.isValid())
        return true;
    return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "expected a material or two colours")));
}

bool BuildingReader::readOutline(const QJsonArray& json, QPainterPath& outline)
{
    if (json.isEmpty() || json.size() > MaxShapes)
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "expected 1 to 500 shapes")));
    QPainterPath added;
    QPainterPath removed;
    added.setFillRule(Qt::WindingFill);
    removed.setFillRule(Qt::WindingFill);
    for (const QJsonValue& value : json) {
        QPainterPath shape;
        if (!readShape(value.toObject(), shape))
            return false;
        (value["cut"].toBool() ? removed : added).addPath(shape);
        if (added.elementCount() + removed.elementCount() > qMin(MaxOutlinePoints, MaxBuildingPoints - m_points))
            return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "the shapes have too many points")));
    }
    m_points += added.elementCount() + removed.elementCount();
    outline = PathGeometry::subtracted(added, removed);
    return true;
}

bool BuildingReader::readShape(const QJsonObject& json, QPainterPath& shape)
{
    QVector<double> n;
    if (json.contains("rect")) {
        if (!readNumbers(json["rect"], 4, n))
            return false;
        shape.addRect(n[0], n[1], n[2], n[3]);
    } else if (json.contains("ellipse")) {
        if (!readNumbers(json["ellipse"], 4, n))
            return false;
        shape.addEllipse(QPointF(n[0], n[1]), n[2], n[3]);
    } else if (json.contains("rounded")) {
        if (!readNumbers(json["rounded"], 5, n))
            return false;
        shape.addRoundedRect(n[0], n[1], n[2], n[3], n[4], n[4]);
    } else if (!readPolygon(json["polygon"].toArray(), shape)) {
        return false;
    }
    return !json.contains("repeat") || repeatShape(json["repeat"].toArray(), shape);
}

bool BuildingReader::repeatShape(const QJsonArray& json, QPainterPath& shape)
{
    QVector<double> n;
    if (!readNumbers(json, 3, n))
        return false;
    if (n[0] < 1 || n[0] > MaxShapes)
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "expected 1 to 500 repeats")));
    const QPainterPath one = shape;
    for (int i = 1; i < int(n[0]); ++i)
        shape.addPath(one.translated(n[1] * i, n[2] * i));
    return true;
}

bool BuildingReader::readPolygon(const QJsonArray& json, QPainterPath& shape)
{
    if (json.size() < 3 || json.size() > MaxPoints)
        return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "a polygon needs 3 to 2000 points")));
    QPolygonF polygon;
    for (const QJsonValue& value : json) {
        QVector<double> point;
        if (!readNumbers(value, 2, point))
            return false;
        polygon.append({point[0], point[1]});
    }
    shape.addPolygon(polygon);
    shape.closeSubpath();
    return true;
}

bool BuildingReader::readNumbers(const QJsonValue& json, int count, QVector<double>& numbers)
{
    numbers.clear();
    const QJsonArray array = json.toArray();
    for (const QJsonValue& value : array)
        numbers.append(value.toDouble(std::nan("")));
    const auto fits = [](double number) { return std::abs(number) <= MaxLength; };  // false for what is no number
    if (numbers.size() == count && std::all_of(numbers.begin(), numbers.end(), fits))
        return true;
    return refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "expected %1 numbers up to 1000")).arg(count));
}

bool BuildingReader::readText(const QJsonValue& json, QString& text)
{
    text = json.isString() ? json.toString() : json[m_language].toString();
    return !text.isEmpty() || refuse(say(QT_TRANSLATE_NOOP("BuildingReader", "a name is missing")));
}

bool BuildingReader::refuse(const QString& reason)
{
    m_reason = m_place + ": " + reason;
    return false;
}
