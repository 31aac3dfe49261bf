#pragma once

#include "SyncedDialog.h"

#include <CloudTest.h>
#include <FaultServer.h>

#include <memory>

/// An account on a server, with what lies there.
struct CSyncedCloud {
    QString user;
    QString password;
    QString address;
    QString root;  ///< the folder of this machine that holds the product's files

    SyncedProfile::Files Documents() const { return visibleTree(root + "/JsonFiles"); }
    SyncedProfile::Files Textures() const { return visibleTree(root + "/TextureFiles"); }
    SyncedAccount Account() const { return {user, password, address}; }
    CCloudAccount Elsewhere() const { return {user, password, address}; }
};

/// The server that misbehaves when it is told to.
class CFaultyCloud : public CFaultServer {
public:
    CSyncedCloud cloud{User, Password, GetAddress(), GetFolder() + "/KIV"};

    /// What was asked for since the last call, "METHOD path" each; of one method when that is given.
    QStringList TakeRequests(const QByteArray& method = {});
    /// How many requests of the method came since then.
    int CountAsked(const QByteArray& method);

private:
    void ReadLog();

    QVector<CRequestRecord> m_log;
};

/// Base of the tests that mirror favourites with the real dialog. The network counts as being there.
class CSynchronisationTest : public CCloudTest {
    Q_OBJECT

protected:
    void prepare() override;
    void finish() override;

    /// Nothing waits for the cloud.
    static bool IsIdle();
    /// Everything that was asked for has come or will not.
    static bool AreDownloadsOver();
    /// Presses the button and waits until nothing waits any more; how that ended.
    static QString Synchronise(SyncedDialog& dialog);
    /// The cloud has what this machine has, and the records say so.
    static void Compare(const CSyncedCloud& cloud, const SyncedProfile& profile);
    static QString Counts(int succeeded, int failed, int waiting);

private slots:
    void cleanup();
};
