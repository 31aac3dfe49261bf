#include "MaterialHelper.h"

#include "AppearanceTextures.h"
#include "FavoriteStore.h"
#include "MaterialConstants.h"
#include "MessageBoxes.h"

#include <glenox/StdStringTrans.h>
#include <kiv/TextureManager.h>
#include <kiv/system/StoredPath.h>

#include <QApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QTemporaryFile>

#include <algorithm>
#include <set>

namespace kiv {

namespace {

constexpr int IconSide = 128;

// Numbers that names of "Customer Library" have behind the base.
std::set<int> usedNumbers(const CAppearanceLibraryManager& manager, const QString& base)
{
    std::set<int> numbers;
    const auto library = manager.FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    if (!library)
        return numbers;
    for (const auto& entry : *library) {
        QString otherBase;
        int number = 0;
        CMaterialHelper::SeparateName(QString::fromLocal8Bit(entry.second->GetName().c_str()), otherBase, number);
        if (otherBase.compare(base, Qt::CaseInsensitive) == 0)
            numbers.insert(number);
    }
    return numbers;
}

// Null for what is no picture, and for one that would claim more memory than a texture may.
// A drawing is a program of unknown length and may name other files.
bool isDrawing(const QByteArray& format)
{
    return format.startsWith("svg") || format == "pdf";
}

QImage loadPicture(const QString& path)
{
    if (!system::IsRegularFile(path))
        return {};
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (isDrawing(reader.format()) || !size.isValid() ||
        qint64(size.width()) * size.height() > CTextureManager::MaxPixels)
        return {};
    return reader.read();
}

bool isTexturePresent(const CAppearanceInstance& texture, const CAppearanceLibraryManager& manager)
{
    const std::wstring file = GStdStringTrans::StringToWString(texture.GetTextureFile());
    return system::IsRegularFile(system::JoinPath(manager.GetTextureLibraryPath(), file)) ||
           system::IsRegularFile(system::NativePath(file));
}

void warn(const QString& text)
{
    MessageBoxes::Warn(QApplication::activeWindow(), QCoreApplication::translate("CMaterialHelper", "提示"), text);
}

void warnOfDuplicate()
{
    warn(QCoreApplication::translate("CMaterialHelper", "该材质已经被收藏过了！"));
}

CAppearanceInstancePtr warnOfFailure(const CFavoriteStore& store)
{
    warn(QCoreApplication::translate("CMaterialHelper", "收藏失败：%1").arg(store.GetReason()));
    return {};
}

// The look of the source in an appearance of the chosen type, without an identity yet.
CAppearanceInstancePtr makeFavorite(const CAppearanceInstance& source, const std::string& category,
                                    CMaterialLibrary& library)
{
    const auto favorite = library.CreateMaterialInstance(category);
    if (!favorite)
        return {};
    favorite->IncompleteAssign(source, false, false);
    favorite->SetName({});
    favorite->SetId({});
    favorite->SetCategory(category);
    favorite->SetEditType(0);
    if (const auto bump = favorite->GetBumpTexture())
        bump->SetTextureFile({});
    if (category == APPEARANCE_TYPE_METAL) {
        favorite->SetProperty(APPEARANCE_METALLIC, MakePropertyValue(1.0f));
        favorite->SetProperty(APPEARANCE_USE_ENVIRONMENT_MAP, MakePropertyValue(true));
    }
    return favorite;
}

}  // namespace

QString CMaterialHelper::GenerateNoRepeatName(CAppearanceLibraryManager& manager, const QString& name)
{
    QString base;
    int number = 0;
    SeparateName(name, base, number);
    const std::set<int> used = usedNumbers(manager, base);
    if (used.count(number) == 0)
        return base;
    int free = 0;
    while (used.count(free) != 0)
        ++free;
    return free < 1 ? base : QStringLiteral("%1_%2").arg(base, QString::number(free));
}

void CMaterialHelper::SeparateName(const QString& name, QString& base, int& number)
{
    const int separator = name.lastIndexOf(QLatin1Char('_'));
    bool isNumber = false;
    const int tail = separator > 0 ? name.mid(separator + 1).toInt(&isNumber, 10) : 0;
    base = isNumber ? name.left(separator) : name;  // the last use of name, which may be the same text
    number = isNumber ? tail : 0;
}

std::string CMaterialHelper::HashBytes(const char* data, unsigned long long size)
{
    constexpr unsigned long long block = 1u << 30;  // the digest takes an int
    QCryptographicHash hash(QCryptographicHash::Sha1);
    while (size > 0) {
        const unsigned long long count = std::min(size, block);
        hash.addData(data, int(count));
        data += count;
        size -= count;
    }
    return hash.result().toHex().toStdString();
}

QString CMaterialHelper::GetPictureRealType(const QString& path)
{
    const QString native = system::NativePath(path);
    QFile file(native);
    if (!system::IsRegularFile(native) || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray head = file.read(4);
    if (head.startsWith("\xFF\xD8"))
        return QStringLiteral("JPG");
    if (head.startsWith("BM"))
        return QStringLiteral("BMP");
    return head == "\x89PNG" ? QStringLiteral("PNG") : QString();
}

bool CMaterialHelper::CheckTextureFileValidity(const QString& path)
{
    return !path.isEmpty() && !GetPictureRealType(path).isEmpty();
}

QString CMaterialHelper::ScaledPicture(const QString& path)
{
    const QString format = GetPictureRealType(path);
    const QImage picture = loadPicture(system::NativePath(path));
    if (format.isEmpty() || picture.isNull())
        return {};
    const QSize size(GetPictureScaledSize(picture.width()), GetPictureScaledSize(picture.height()));
    QTemporaryFile file;
    if (!file.open())
        return {};
    if (!picture.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation).save(&file, format.toLatin1()) ||
        !file.flush())
        return {};
    file.setAutoRemove(false);
    return file.fileName();
}

int CMaterialHelper::GetPictureScaledSize(int size)
{
    int lower = 128;
    int upper = 512;
    for (const int step : {4, 8, 16, 32, 64, 128, 256, 512}) {
        if (size == step)
            return size;
        if (size < step) {
            upper = step;
            break;
        }
        lower = step;
    }
    const int excess = (size - lower) / size;  // whole division: 0 for every size above the lower bound
    return 0.1 > double(excess) ? lower : upper;
}

QPixmap CMaterialHelper::GetTextureIcon(const QString& path)
{
    if (path.isEmpty())
        return {};
    const QString native = system::NativePath(path);
    QPixmap icon;
    const auto fill = [&icon](int width, int height, const unsigned char* rgba) {
        const QImage pixels(rgba, width, height, width * 4, QImage::Format_RGBA8888);
        icon = QPixmap::fromImage(pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                                      .scaled(IconSide, IconSide, Qt::KeepAspectRatio, Qt::FastTransformation));
    };
    if (CTextureManager::TextureHelper(native.toStdWString(), fill))
        return icon;
    return QPixmap::fromImage(loadPicture(native));
}

bool CMaterialHelper::CheckResourceComplete(const CAppearanceInstancePtr& appearance,
                                            CAppearanceLibraryManager& manager)
{
    if (!appearance || !appearance->GetCloudFlag())
        return true;
    const auto textures = FindTextures(*appearance);
    return std::all_of(textures.begin(), textures.end(),
                       [&](const auto& texture) { return isTexturePresent(*texture, manager); });
}

CAppearanceInstancePtr CMaterialHelper::AddFavorite(const CAppearanceInstancePtr& source, const std::string& category,
                                                    CAppearanceLibraryManager& manager, CMaterialLibrary* library)
{
    if (!source || !library || manager.GetFavoriteLibraryPath().empty())
        return {};
    const auto favorite = makeFavorite(*source, category, *library);
    if (!favorite)
        return {};
    CFavoriteStore store(manager);
    if (!store.TakeTextures(*favorite))
        return warnOfFailure(store);
    // Told apart by everything but name and id, so that the same look is the same favourite whatever it is called.
    const std::string digest = store.Digest(favorite);
    if (store.Contains(digest)) {
        warnOfDuplicate();
        return {};
    }
    favorite->SetId(digest);
    favorite->SetName(source->GetName());
    return store.Write(favorite) ? favorite : warnOfFailure(store);
}

}  // namespace kiv
