#include <kiv/MaterialLibrary.h>

#include "LibraryFolderLoader.h"

#include <glenox/StdStringTrans.h>

#include <QRegularExpression>
#include <QUuid>

namespace kiv {

namespace {

const char* const CustomerLibraryName = "Customer Library";
const char* const FallbackTemplateName = "Generic";

bool isIdentifier(const std::wstring& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A(\\{)?[0-9A-Fa-f]{8}(-?[0-9A-Fa-f]{4}){3}-?[0-9A-Fa-f]{12}(?(1)\\})\\z"));
    return pattern.match(QString::fromStdWString(text)).hasMatch();
}

CAppearanceLibraryPtr addLibrary(CAppearanceLibraryManager& manager, const String& name)
{
    auto library = std::make_shared<CAppearanceLibrary>();
    library->SetId(name);
    library->SetName(name);
    manager.AddUserAppearanceLibrary(library);
    return library;
}

CAppearanceInstancePtr createEditable(const CAppearanceLibraryManager& manager, const CAppearanceTemplatePtr& type,
                                      const String& name, const String& category)
{
    const auto appearance = manager.CreateAppearanceInstance(type, name);
    if (appearance) {
        appearance->SetEditType(1);
        appearance->SetCategory(category);
    }
    return appearance;
}

}  // namespace

CMaterialLibrary::CMaterialLibrary()
{
    addLibrary(m_manager, CustomerLibraryName);
}

CMaterialLibrary::~CMaterialLibrary() = default;

bool CMaterialLibrary::Open(const CMaterialLibraryPaths& paths)
{
    m_manager.SetLibraryPath(paths.library);
    m_manager.SetTextureLibraryPath(paths.textures);
    m_manager.SetFavoriteLibraryPath(paths.favorites);
    m_report.clear();
    CLibraryFolderLoader loader(m_manager, paths.library, m_report);
    loader.LoadConfiguration();
    loader.LoadTexts();
    const bool hasTemplates = loader.LoadTemplates();
    const bool hasSystemLibrary = loader.LoadSystemLibrary();
    return hasTemplates && hasSystemLibrary;
}

CAppearanceInstancePtr CMaterialLibrary::CreateMaterial(const String& templateName, const std::wstring& name)
{
    return createEditable(m_manager, m_manager.FindTemplate(templateName), GStdStringTrans::WStringToString(name),
                          templateName);
}

CAppearanceInstancePtr CMaterialLibrary::CreateMaterialInstance(const String& templateName)
{
    auto type = m_manager.FindTemplate(templateName);
    if (!type)
        type = m_manager.FindTemplate(FallbackTemplateName);
    return createEditable(m_manager, type, {}, templateName);
}

CAppearanceInstancePtr CMaterialLibrary::CopyMaterial(const CAppearanceInstancePtr& appearance,
                                                      const std::wstring& newName)
{
    if (!appearance)
        return {};
    const String text = GStdStringTrans::WStringToString(newName);
    const bool isId = isIdentifier(newName);
    const auto copy = appearance->Clone(isId ? text : newGUID());
    if (!isId)
        copy->SetName(text);
    copy->SetEditType(1);
    copy->SetCloudFlag(false);  // the cloud knows the original only
    auto library = m_manager.FindUserAppearanceLibrary(CustomerLibraryName);
    if (!library)
        library = addLibrary(m_manager, CustomerLibraryName);
    return library->AddInstance(copy) ? copy : nullptr;
}

String CMaterialLibrary::newGUID()
{
    return QUuid::createUuid().toString(QUuid::Id128).toStdString();
}

}  // namespace kiv
