#pragma once

#include "CloudRequest.h"

#include <MaterialTest.h>

#include <QMap>
#include <QTemporaryDir>

/// Base of the tests of the cloud service. Everything that they write lies below one folder; at the end neither a file
/// of it nor a message of the program may contain a password.
class CCloudTest : public MaterialTest {
    Q_OBJECT

public:
    CCloudTest();

protected:
    void prepare() override;
    void finish() override;

    /// A path for files of this machine, different for each call.
    QString NewFolder();

private slots:
    void init();

private:
    QTemporaryDir m_place;
    int m_folders = 0;
};

/// The arguments of the program that is another process with a session: what it does, for which account.
QStringList helperArguments(const QString& what, const CCloudAccount& account, const QByteArray& certificates = {},
                            const QString& file = {});

/// Logs in from another process; what that says.
QByteArray logInElsewhere(const CCloudAccount& account, const QByteArray& certificates = {});

/// Files with what they hold, and folders (with a "/" at the end), by their paths below the folder; without session
/// marks and what lies in them.
QMap<QString, QByteArray> visibleTree(const QString& folder);

/// The session marks in an account's root.
QStringList marksIn(const QString& root);

/// Bytes that repeat nowhere, the same in every run.
QByteArray someBytes(int count);

/// Of one item of a folder; empty when it is not there.
QString idOf(const QString& name, const QString& folderId = {});
