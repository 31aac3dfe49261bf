#include "MaterialTest.h"

#include <QApplication>
#include <QMutex>
#include <QStandardPaths>
#include <QTextCodec>

namespace {

QtMessageHandler s_previous = nullptr;
QMutex s_mutex;
QVector<QRegularExpression> s_expected;

bool isExpected(const QString& text)
{
    QMutexLocker lock(&s_mutex);
    return std::any_of(s_expected.cbegin(), s_expected.cend(),
                       [&](const QRegularExpression& pattern) { return pattern.match(text).hasMatch(); });
}

void failOnWarning(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool bad = type == QtWarningMsg || type == QtCriticalMsg;
    if (bad && isExpected(text))
        return;
    s_previous(type, context, text);
    if (bad)
        QTest::qFail(qPrintable("unexpected warning: " + text), context.file ? context.file : "", context.line);
}

}  // namespace

void MaterialTest::expectWarning(const QString& pattern)
{
    QMutexLocker lock(&s_mutex);
    s_expected.append(QRegularExpression(pattern));
}

void MaterialTest::forgetExpectedWarnings()
{
    QMutexLocker lock(&s_mutex);
    s_expected.clear();
}

void MaterialTest::initTestCase()
{
    // Qt Test installs its own handler as it starts, so this one goes on top of it here and not earlier.
    s_previous = qInstallMessageHandler(failOnWarning);
    prepare();
}

void MaterialTest::cleanupTestCase()
{
    finish();
    qInstallMessageHandler(s_previous);
}

void MaterialTest::cleanup()
{
    forgetExpectedWarnings();
}

int runMaterialTest(int argc, char** argv, QObject& (*make)())
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    return QTest::qExec(&make(), argc, argv);
}
