// What the controls of the panel do to the appearance.

#include "DynamicWidget.h"
#include "ImageCtrl.h"
#include "TextureEditorDlg.h"

#include <MaterialConstants.h>

#include <kiv/AppearanceSerializer.h>
#include <kiv/Image.h>

#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPointer>

using kiv::CAppearanceInstance;
using kiv::CAppearanceInstancePtr;
using kiv::String;

namespace {

constexpr double ReliefHeight = 8.0;
constexpr double ReliefSmoothing = 2.0;

// Two keys have setters of their own, since others follow from them.
void write(CAppearanceInstance& appearance, const String& key, const kiv::CPropertyValuePtr& value)
{
    if (key == APPEARANCE_TRANSPARENT)
        appearance.SetTransparent(value->Get<float>());
    else if (key == APPEARANCE_DIFFUSE_COLOR)
        appearance.SetDiffuse(value->Get<kiv::CVec4<float>>());
    else
        appearance.SetProperty(key, value);
}

void takePlacement(CAppearanceInstance& texture, const CAppearanceInstance& placed)
{
    for (const char* part : {"rotation", "scale", "offset", "transform", "repeat_h", "repeat_v"})
        texture.SetProperty(part, placed.FindProperty(part));
}

class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace

// Before the change: the record is what puts it back. False when the change is not to be made, since whoever heard of
// the record took the panel or its appearance away.
bool CDynamicWidget::announceEdit(const String& key)
{
    if (!m_isBuilt || !m_appearance)
        return false;
    const QPointer<CDynamicWidget> alive(this);
    const CAppearanceInstancePtr edited = m_appearance;
    kiv::CAppearanceSerializer serializer(m_manager);
    serializer.SetAppearanceLibrary(libraryOf(edited));
    emit TransformEditedData(serializer.SerializeEditedMaterialData(edited->GetId(), kiv::EditedMaterialChanged, key));
    return alive && m_appearance == edited;
}

// By the object: another one may lie under its id by now, which has nothing to do with the edit.
kiv::CAppearanceLibraryPtr CDynamicWidget::libraryOf(const CAppearanceInstancePtr& appearance) const
{
    const auto holds = [&](const kiv::CAppearanceLibraryPtr& library) {
        return library && library->FindInstance(appearance->GetId()) == appearance;
    };
    const auto project = m_manager.FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    if (holds(project))
        return project;
    for (auto it = m_manager.beginLibrary(); it != m_manager.endLibrary(); ++it)
        if (it->second != m_manager.GetSystemLibrary() && holds(it->second))
            return it->second;
    return {};
}

void CDynamicWidget::OnPropertyChanged(const String& id, const kiv::CPropertyValuePtr& val)
{
    if (!val || !announceEdit(id))
        return;
    write(*m_appearance, id, val);
    emit ChangeAppearance(id);
}

void CDynamicWidget::OnImageChanged(const String& id, const kiv::CPropertyValuePtr& val)
{
    if (!announceEdit(id))
        return;
    if (const auto texture = textureOf(id)) {
        texture->SetProperty(APPEARANCE_TEXTURE_FILE, val);
        if (m_mapped)
            takePlacement(*texture, *m_mapped);
    }
    emit ChangeAppearance(id);
}

CAppearanceInstancePtr CDynamicWidget::textureOf(const String& key) const
{
    return m_appearance ? m_appearance->ValueOr<CAppearanceInstancePtr>(key, nullptr) : nullptr;
}

// ---- placing a texture

void CDynamicWidget::OnShowTextureEditor(const QString& id)
{
    const String key = id.toLocal8Bit().toStdString();
    const CAppearanceInstancePtr edited = m_appearance;
    const CAppearanceInstancePtr texture = textureOf(key);
    if (!texture)
        return;
    const QPointer<CDynamicWidget> alive(this);
    const auto library = libraryOf(edited);
    const QString unit = QString::fromLocal8Bit(m_library.GetTextureUnit().c_str());
    const QPointer<CTextureEditorDlg> dialog(
        new CTextureEditorDlg(m_manager, texture->Clone(texture->GetId()), unit, this));
    dialog->exec();
    if (!alive || !dialog)
        return;
    const CAppearanceInstancePtr placed = dialog->GetTexture();
    delete dialog;
    if (m_appearance == edited && textureOf(key) == texture && libraryOf(edited) == library)
        keepPlacement(key, *texture, *placed);
}

void CDynamicWidget::keepPlacement(const String& key, CAppearanceInstance& texture, const CAppearanceInstance& placed)
{
    if (!announceEdit(key))
        return;
    takePlacement(texture, placed);
    emit ChangeAppearance(key);
}

// ---- making a normal map

void CDynamicWidget::OnGenNormalMap(CImageCtrl* pControl)
{
    const auto texture = textureOf(APPEARANCE_DIFFUSE_TEXTURE);
    const QPointer<CImageCtrl> control(pControl);
    if (!texture || !control)
        return;
    const QString normalMap =
        makeNormalMap(QString::fromLocal8Bit(m_manager.ResolvePath(texture->GetTextureFile()).c_str()));
    if (normalMap.isEmpty() || !control)
        return;
    control->SetTypedValue(normalMap.toLocal8Bit().toStdString());
    m_mapped = texture;
    const QPointer<CDynamicWidget> alive(this);
    control->OnValueChanged();
    if (alive)
        m_mapped.reset();
}

QString CDynamicWidget::makeNormalMap(const QString& picture)
{
    if (!QFileInfo(picture).isFile())
        return {};
    const QString path = picture.left(picture.lastIndexOf('.')) + QStringLiteral("_normal.jpg");
    if (QFileInfo::exists(path))
        return path;
    bool isSaved = false;
    {
        const WaitCursor cursor;
        const auto image = kiv::CImage::CreateNormalMapFromFile(picture.toStdWString(), ReliefHeight, ReliefSmoothing);
        if (!image)
            return {};
        isSaved = image->SaveToFile(path.toStdWString());
    }
    if (isSaved)
        return path;
    const QPointer<QMessageBox> box(new QMessageBox(QMessageBox::Warning, tr("提示"),
                                                    tr("无法写入法线贴图“%1”。").arg(path), QMessageBox::Ok, this));
    box->exec();
    delete box;
    return {};
}
