#include "BrowserFixture.h"

#include <QTreeWidgetItemIterator>
#include <QtTest>

namespace {

const char* const textureTemplate = R"({"name":"Texture","schema":{"parameters":{
"template":{"type":"string","default_value":"Texture"},"texture_file":{"type":"string","default_value":""}},
"shader":{"id":"Texture"},"vs_uniform_bindings":{},"fs_uniform_bindings":{},"phong_material_bindings":{}},
"ui":{"StackPanels":[]}})";

const char* const genericTemplate = R"({"name":"Generic","schema":{"parameters":{
"template":{"type":"string","default_value":"Generic"},"id":{"type":"string","default_value":""},
"name":{"type":"string","default_value":""},"category":{"type":"string","default_value":"Generic"},
"tags":{"type":"string","default_value":""},"edit_type":{"type":"int","default_value":"1"},
"diffuse_color":{"type":"color4","default_value":"0.5,0.25,1,1"},
"useBaseTexture":{"type":"bool","default_value":"0"},"diffuse_texture":{"type":"Texture","default_value":{}}},
"shader":{"id":"Generic","shader_preview":["diffuse_texture","diffuse_color"]},
"vs_uniform_bindings":{},"fs_uniform_bindings":{},"phong_material_bindings":{}},
"ui":{"StackPanels":[]}})";

kiv::CAppearanceTemplatePtr read(const char* json, const kiv::CAppearanceTemplatePtr& textures)
{
    kiv::CParseError error;
    const auto result = kiv::CAppearanceTemplate::FromJson(json, textures, error);
    if (!result)
        qFatal("template: %s", error.Text().c_str());
    return result;
}

QString depthOf(const QTreeWidgetItem* item)
{
    QString blanks;
    for (item = item->parent(); item; item = item->parent())
        blanks += ' ';
    return blanks;
}

}  // namespace

BrowserFixture::BrowserFixture()
{
    const kiv::CAppearanceTemplatePtr textures = read(textureTemplate, nullptr);
    m_template = read(genericTemplate, textures);
    manager.AddTemplate(textures);
    manager.AddTemplate(m_template);
}

kiv::CAppearanceInstancePtr BrowserFixture::MakeAppearance(const Sample& sample) const
{
    const auto appearance = manager.CreateAppearanceInstance(m_template, sample.name.toStdString());
    appearance->SetId(sample.id.toStdString());
    appearance->SetCategory(sample.category.toStdString());
    appearance->SetTags(sample.tags.toStdString());
    return appearance;
}

kiv::CAppearanceLibraryPtr BrowserFixture::MakeLibrary(const QString& name, const QList<Sample>& samples)
{
    const auto library = std::make_shared<kiv::CAppearanceLibrary>();
    library->SetName(name.toStdString());
    library->SetId(name.toStdString());
    for (const Sample& sample : samples)
        library->AddInstance(MakeAppearance(sample));
    return library;
}

QList<BrowserFixture::Sample> BrowserFixture::Samples()
{
    return {{"a", "Walnut", "Wood", "dark 胡桃木"},  {"b", "Red brick", "Brick", "facade 红砖"},
            {"c", "Cork", "Other", "floor"},         {"d", "Oak", "Wood/Hard", "light"},
            {"e", "Glazed brick", "Brick/", "tile"}, {"f", "Zebrano", "Wood//Hard/Rare", ""}};
}

std::unique_ptr<CAppearanceLibraryBrowserCtrl> BrowserFixture::MakeBrowser(AppearanceLibraryProvider* provider)
{
    auto browser = std::make_unique<CAppearanceLibraryBrowserCtrl>(manager, nullptr, provider, false);
    browser->resize(320, 480);
    browser->show();
    QCoreApplication::processEvents();
    return browser;
}

Selections::Selections(CAppearanceLibraryBrowserCtrl& browser)
{
    QObject::connect(&browser, &CAppearanceLibraryBrowserCtrl::OnSelectAppearance,
                     [this](const kiv::CAppearanceInstancePtr& appearance) {
                         m_ids.append(QString::fromStdString(appearance->GetId()));
                     });
}

QStringList RowIds(const CAppearanceLibraryBrowserCtrl& browser)
{
    QStringList ids;
    for (int row = 0; row < browser.GetTableWidget()->rowCount(); ++row)
        ids.append(browser.GetTableWidget()->item(row, 1)->data(Qt::UserRole).toString());
    return ids;
}

QStringList TreeTexts(const CAppearanceLibraryBrowserCtrl& browser)
{
    QStringList texts;
    for (QTreeWidgetItemIterator it(browser.GetTreeWidget()); *it; ++it)
        texts.append(depthOf(*it) + (*it)->text(0));
    return texts;
}

QTreeWidgetItem* TreeItem(const CAppearanceLibraryBrowserCtrl& browser, const QString& userText)
{
    for (QTreeWidgetItemIterator it(browser.GetTreeWidget()); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == userText)
            return *it;
    }
    return nullptr;
}

void ClickTree(const CAppearanceLibraryBrowserCtrl& browser, QTreeWidgetItem* item)
{
    QTreeWidget* tree = browser.GetTreeWidget();
    tree->scrollToItem(item);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
}

void ClickCell(const CAppearanceLibraryBrowserCtrl& browser, int row, int column)
{
    QTableWidget* table = browser.GetTableWidget();
    const QRect rect = table->visualItemRect(table->item(row, column));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, rect.center());
}
