#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QtTest>

/// Base of every test: any Qt warning that the test does not announce fails it, since a connection that does not match
/// or a widget misused tells by a warning only. Derived classes may not declare initTestCase or cleanupTestCase; they
/// override prepare() and finish().
class MaterialTest : public QObject {
    Q_OBJECT

public:
    MaterialTest() = default;

    /// Announces that warnings matching the pattern may come from now to the end of the current test function.
    static void expectWarning(const QString& pattern);

    /// Removes what expectWarning announced; called between test functions.
    static void forgetExpectedWarnings();

protected:
    virtual void prepare() {}
    virtual void finish() {}

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();
};

/// Names the columns of a test's table. What is answered adds a row: row("name", value, ...).
template <typename... Values, typename... Names>
auto testColumns(Names... names)
{
    (QTest::addColumn<Values>(names), ...);
    return [](const char* name, const Values&... values) { (QTest::newRow(name) << ... << values); };
}

/// Runs the test class with a QApplication, UTF-8 as narrow text and the test's own settings folders.
int runMaterialTest(int argc, char** argv, QObject& (*make)());

#define MATERIAL_TEST_MAIN(TestClass)                                                                                  \
    int main(int argc, char** argv)                                                                                    \
    {                                                                                                                  \
        return runMaterialTest(argc, argv, []() -> QObject& {                                                          \
            static TestClass test;                                                                                     \
            return test;                                                                                               \
        });                                                                                                            \
    }
