#pragma once

#include <LoginCallback.h>

#include <QCoreApplication>
#include <QObject>
#include <QString>

#include <functional>

/// Logs in to the storage service, in place of whoever was logged in, and tells how that ended.
class SignIn {
    Q_DECLARE_TR_FUNCTIONS(SignIn)

public:
    /// `done` is called on the application's thread, unless the context is gone by then: with an empty text after a
    /// success, else with the reason in words.
    static void begin(const LoginAccountInfo& account, QObject* context, const std::function<void(QString)>& done);

    /// In words: what came instead of an answer, or a code of the service; empty for the empty code.
    static QString noAnswer();
    static QString reason(const QString& code);
};
