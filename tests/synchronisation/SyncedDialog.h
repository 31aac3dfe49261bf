#pragma once

#include "SyncedProfile.h"

#include <LoginCallback.h>

class QToolButton;

/// The host's side of logging in.
class SyncedAccount : public LoginCallback {
public:
    SyncedAccount(const QString& user, const QString& password, const QString& address)
        : m_user(user), m_password(password), m_address(address)
    {
    }

    bool GetLoginInfo(LoginAccountInfo& info) override;
    bool IsLoginEnabled() override { return true; }

    bool isThere = true;  ///< whether there is an account to log in with
    int asked = 0;

private:
    QString m_user;
    QString m_password;
    QString m_address;
};

/// The dialog with the cloud's part of its inside open to tests.
class SyncedDialog : public TestedDialog {
    Q_OBJECT

public:
    /// Without an account nobody logs in.
    explicit SyncedDialog(SyncedProfile& profile, SyncedAccount* account = nullptr, bool cloudEnabled = true);

    /// Shows it and waits until the favourites of the disk are there and, with an account, somebody is logged in. Fails
    /// the test when that does not happen.
    void open() override;
    /// Shows the favourites in the lower table.
    void showFavorites();
    QToolButton* synchronizeButton() const;
    void pressSynchronize();
    void remove(const QString& id);

    QString accountText() const;
    QString countsText() const;
    /// How the last synchronisation ended, as the dialog tells.
    QString lastCounts() const;
    /// The picture of a favourite in the table, as it is drawn.
    QImage thumbnail(const QString& id) const;

    using CMaterialLibraryWidget::AddFavoriteAppearanceFunc;
    using CMaterialLibraryWidget::SynchronizedCloudFunc;

private:
    SyncedProfile& m_profile;
    SyncedAccount* m_account;
};
