#include "DialogFixture.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <SceneWidget.h>

#include <MaterialTest.h>
#include <Measured.h>

#include <kiv/Viewer.h>

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

DialogFixture::DialogFixture()
{
    // The style sheet of the dialog ends with a brace that has no partner, and has to.
    MaterialTest::expectWarning("^Could not parse stylesheet of object");
    addSystemAppearances(3);
    const auto project = manager().FindUserAppearanceLibrary("Customer Library");
    project->AddInstance(makeTagged("p0"));
    project->AddInstance(makeTagged("p1"));
}

void DialogFixture::addSystemAppearances(int count)
{
    const auto& library = manager().GetSystemLibrary();
    for (; count > 0; --count)
        library->AddInstance(makeTagged("s" + std::to_string(library->count())));
    for (; count < 0; ++count)
        library->DeleteInstance("s" + std::to_string(library->count() - 1));
}

kiv::CAppearanceInstancePtr DialogFixture::makeTagged(const kiv::String& id)
{
    const auto appearance = makeAppearance(id);
    appearance->SetTags("tag of " + id);
    return appearance;
}

TestedDialog::TestedDialog(DialogFixture& fixture, bool cloudEnabled, const std::string& projectLibrary,
                           AppearanceLibraryProvider* provider)
    : CMaterialLibraryWidget(provider, &fixture.library(), false, nullptr, false, projectLibrary, cloudEnabled)
{
    connect(this, &CMaterialLibraryWidget::MatApply, [this](QString& id) { keptIds += id; });
}

CAppearanceLibraryBrowserCtrl* TestedDialog::project() const
{
    return findChild<CAppearanceLibraryBrowserCtrl*>("ProjectLibrary");
}

CAppearanceLibraryBrowserCtrl* TestedDialog::system() const
{
    return findChild<CAppearanceLibraryBrowserCtrl*>("SystemLibrary");
}

QPushButton* TestedDialog::ok() const
{
    return findChild<QPushButton*>("pushButtonOk");
}

int TestedDialog::rowOf(const CAppearanceLibraryBrowserCtrl* browser, const QString& id)
{
    const QTableWidget* table = browser->GetTableWidget();
    for (int row = 0; row < table->rowCount(); ++row) {
        if (table->item(row, 1)->data(Qt::UserRole).toString() == id)
            return row;
    }
    return -1;
}

static QPoint placeOf(const CAppearanceLibraryBrowserCtrl* browser, const QString& id)
{
    QTableWidget* table = browser->GetTableWidget();
    QTableWidgetItem* item = table->item(TestedDialog::rowOf(browser, id), 1);
    table->scrollToItem(item);
    return table->visualItemRect(item).center();
}

void TestedDialog::clickRow(const CAppearanceLibraryBrowserCtrl* browser, const QString& id)
{
    QTest::mouseClick(browser->GetTableWidget()->viewport(), Qt::LeftButton, {}, placeOf(browser, id));
}

void TestedDialog::doubleClickRow(const CAppearanceLibraryBrowserCtrl* browser, const QString& id)
{
    clickRow(browser, id);
    QTest::mouseDClick(browser->GetTableWidget()->viewport(), Qt::LeftButton, {}, placeOf(browser, id));
}

QString TestedDialog::shownName() const
{
    return findChild<QLabel*>("AppearanceName")->text();
}

QColor TestedDialog::shownPixel() const
{
    constexpr int side = 32;
    kiv::CViewer* viewer = findChild<CSceneWidget*>()->GetViewer();
    const QImage picture = viewer ? pictureOf(*viewer, side, side) : QImage();
    return picture.isNull() ? QColor() : picture.pixelColor(side / 2, side / 2);
}

void TestedDialog::ApplyAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    applied += QString::fromStdString(appearance->GetId());
}

void TestedDialog::AppearancePropertyChangedFunc(const kiv::CAppearanceInstancePtr& appearance, const std::string& key)
{
    changed += QString::fromStdString(appearance->GetId() + " " + key);
}

void TestedDialog::onTimerOut()
{
    ++statusCalls;
    CMaterialLibraryWidget::onTimerOut();
}

void TestedDialog::onJsonTimerOut()
{
    ++loadCalls;
    CMaterialLibraryWidget::onJsonTimerOut();
}
