#include "LibraryGenerator.h"

#include "Dice.h"
#include "Vocabulary.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace {

QJsonValue color(Dice& dice)
{
    return QJsonArray{dice.number(0, 1), dice.number(0, 1), dice.number(0, 1), 1.0};
}

QJsonValue numbers(Dice& dice, int count, double min, double max)
{
    QJsonArray array;
    for (int i = 0; i < count; ++i)
        array.append(dice.number(min, max));
    return array;
}

double rounded(double value)
{
    return std::round(value * 1e6) / 1e6;
}

// A texture with its full placement, as the texture editor leaves it: 1 / size in the diagonal of the matrix.
QJsonObject texture(Dice& dice, const QString& file)
{
    const double width = dice.number(0.1, 3);
    const double height = dice.number(0.1, 3);
    const double x = dice.number(-1, 1);
    const double y = dice.number(-1, 1);
    const QJsonArray transform{
        rounded(1 / width), 0.0, rounded(-x / width), 0.0, rounded(1 / height), rounded(-y / height), 0.0, 0.0, 1.0};
    return {{"template", "Texture"},
            {"texture_file", file},
            {"rotation", 0.0},
            {"scale", QJsonArray{width, height}},
            {"offset", QJsonArray{x, y}},
            {"transform", transform},
            {"repeat_h", 0},
            {"repeat_v", 0},
            {"environment_mode", "MODULATE"}};
}

QString category(Dice& dice, const QString& type)
{
    QString path = type;
    const int depth = dice.below(3);
    if (depth > 0)
        path += '/' + QString::fromUtf8(dice.pick(Vocabulary::groups));
    if (depth > 1)
        path += QString("/Series %1").arg(dice.below(20) + 1, 2, 10, QChar('0'));
    return path;
}

// Half of the names are Chinese, as in the libraries that people keep.
QString name(Dice& dice, const QString& type, int index)
{
    const Vocabulary::Word colour = dice.pick(Vocabulary::colours);
    const Vocabulary::Word finish = dice.pick(Vocabulary::finishes);
    const bool chinese = dice.below(2) == 0;
    const auto text = [chinese](const Vocabulary::Word& word) {
        return QString::fromUtf8(chinese ? word.chinese : word.english);
    };
    return QString(chinese ? "%1%2 %3 %4" : "%1 %2 %3 %4")
        .arg(text(colour), text(finish), type)
        .arg(index + 1, 5, 10, QChar('0'));
}

QString tags(Dice& dice, int bytes)
{
    QByteArray text;
    while (text.size() < bytes) {
        const Vocabulary::Word& word = dice.pick(Vocabulary::tags);
        text.append(text.isEmpty() ? "" : " ").append(word.english).append(' ').append(word.chinese);
    }
    return QString::fromUtf8(text);
}

QJsonValue value(Dice& dice, const QString& type, double min, double max)
{
    if (type == "float")
        return dice.number(min, max);
    if (type == "int")
        return int(min) + dice.below(int(max - min) + 1);
    if (type == "bool")
        return dice.below(2) == 0;
    if (type == "color4")
        return color(dice);
    if (type == "vec2" || type == "vec3" || type == "vec4")
        return numbers(dice, type.right(1).toInt(), min, max);
    return {};  // texts, matrices and textures have no range to vary in
}

}  // namespace

CLibraryGenerator::CLibraryGenerator(const GeneratorOptions& options) : m_options(options)
{
    const QDir folder(options.templates.isEmpty() ? MATERIAL_TEMPLATES_DIR : options.templates);
    for (const QString& entry : folder.entryList({"*.json"}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(entry));
        if (file.open(QIODevice::ReadOnly))
            readTemplate(file.readAll());
    }
    if (m_types.isEmpty())
        m_error = QString("no templates of appearances in \"%1\"").arg(folder.path());
}

void CLibraryGenerator::readTemplate(const QByteArray& json)
{
    const QJsonObject document = QJsonDocument::fromJson(json).object();
    const QJsonObject parameters = document["schema"].toObject()["parameters"].toObject();
    if (parameters.contains("diffuse_texture"))
        m_types.append({document["name"].toString(), readParameters(parameters)});
}

QVector<CLibraryGenerator::Parameter> CLibraryGenerator::readParameters(const QJsonObject& parameters)
{
    QVector<Parameter> result;
    for (auto it = parameters.begin(); it != parameters.end(); ++it) {
        const QJsonObject declared = it->toObject();
        Parameter parameter{it.key(), declared["type"].toString()};
        parameter.min = declared["range_min"].toString("0").toDouble();
        parameter.max = declared["range_max"].toString("1").toDouble();
        result.append(parameter);
    }
    return result;
}

QByteArray CLibraryGenerator::Document(int index) const
{
    Dice dice(m_options.seed, quint64(index));
    const Type& type = m_types[index % m_types.size()];
    QJsonObject document{{"id", dice.identifier()},
                         {"name", name(dice, type.name, index)},
                         {"template", type.name},
                         {"category", category(dice, type.name)}};
    for (const Parameter& parameter : type.parameters) {
        const QJsonValue varied = value(dice, parameter.type, parameter.min, parameter.max);
        if (!varied.isNull())
            document[parameter.key] = varied;
    }
    const QString picture = QString::fromUtf8(dice.pick(Vocabulary::textures));
    document["diffuse_texture"] = texture(dice, picture + ".png");
    document["bump_texture"] = texture(dice, picture + "_normal.png");
    document["edit_type"] = 0;
    document["tags"] = "";
    const int missing = m_options.bytes - QJsonDocument(document).toJson(QJsonDocument::Compact).size();
    document["tags"] = tags(dice, missing);
    return QJsonDocument(document).toJson(QJsonDocument::Compact);
}

bool CLibraryGenerator::WriteLibrary(const std::function<bool(const QByteArray&)>& sink) const
{
    if (m_types.isEmpty() || !sink("{\"name\":\"Generated Library\",\"id\":\"Generated Library\",\"appearances\":["))
        return false;
    for (int i = 0; i < m_options.count; ++i) {
        if (!sink((i > 0 ? ",\n" : "\n") + Document(i)))
            return false;
    }
    return sink("\n]}\n");
}

std::string GenerateLibrary(const GeneratorOptions& options)
{
    std::string text;
    CLibraryGenerator(options).WriteLibrary([&text](const QByteArray& piece) {
        text.append(piece.constData(), std::size_t(piece.size()));
        return true;
    });
    return text;
}
