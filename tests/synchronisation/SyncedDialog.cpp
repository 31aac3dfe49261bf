#include "SyncedDialog.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <ItemRoles.h>

#include <QApplication>
#include <QLabel>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

bool SyncedAccount::GetLoginInfo(LoginAccountInfo& info)
{
    ++asked;
    info.a = m_user;
    info.b = m_password;
    info.c = m_address;
    return isThere;
}

SyncedDialog::SyncedDialog(SyncedProfile& profile, SyncedAccount* account, bool cloudEnabled)
    : TestedDialog(profile, cloudEnabled), m_profile(profile), m_account(account)
{
    SetLoginCallback(account);
}

void SyncedDialog::open()
{
    show();
    QTRY_VERIFY(loadCalls > 0 && !QApplication::activeModalWidget());
    const bool logsIn = m_account && m_account->isThere;
    QTRY_COMPARE(accountText(), logsIn ? QString(u8"在线") : QString(u8"离线"));
}

void SyncedDialog::showFavorites()
{
    emit system()->OnMaterialLibraryChange("Favorite Library");
}

QToolButton* SyncedDialog::synchronizeButton() const
{
    return system()->findChild<QToolButton*>("synchronizeButton");
}

void SyncedDialog::pressSynchronize()
{
    QVERIFY(synchronizeButton()->isEnabled() && synchronizeButton()->isVisible());
    QTest::mouseClick(synchronizeButton(), Qt::LeftButton);
}

void SyncedDialog::remove(const QString& id)
{
    kiv::CAppearanceInstancePtr favorite = m_profile.favorite(id);
    QVERIFY(favorite);
    emit system()->OnRemoveApperance(favorite);
}

QString SyncedDialog::accountText() const
{
    return findChild<QLabel*>("LabelAccount")->text();
}

QString SyncedDialog::countsText() const
{
    return findChild<QLabel*>("LabelSynchronization")->text();
}

QString SyncedDialog::lastCounts() const
{
    return findChild<QLabel*>("LabelAccount")->toolTip();
}

QImage SyncedDialog::thumbnail(const QString& id) const
{
    QTableWidget* table = system()->GetTableWidget();
    const QTableWidgetItem* item = table->item(rowOf(system(), id), PictureColumn);
    return table->viewport()->grab(table->visualItemRect(item)).toImage();
}
