#pragma once

#include <LibraryFixture.h>
#include <MaterialLibraryWidget.h>

#include <QStringList>

class QPushButton;

/// A material library with two appearances in the project ("p0", "p1") and three in the system library ("s0" to "s2");
/// each is named after its id and has "tag of <id>" as tag.
class DialogFixture : public LibraryFixture {
public:
    DialogFixture();

    /// Adds appearances to the system library, or takes some away.
    void addSystemAppearances(int count);
    kiv::CAppearanceInstancePtr makeTagged(const kiv::String& id);
};

/// The dialog with its inside open to tests, which work it as a person does.
class TestedDialog : public CMaterialLibraryWidget {
    Q_OBJECT

public:
    TestedDialog(DialogFixture& fixture, bool cloudEnabled, const std::string& projectLibrary = "Customer Library",
                 AppearanceLibraryProvider* provider = nullptr);

    CAppearanceLibraryBrowserCtrl* project() const;
    CAppearanceLibraryBrowserCtrl* system() const;
    QPushButton* ok() const;

    static int rowOf(const CAppearanceLibraryBrowserCtrl* browser, const QString& id);
    static void clickRow(const CAppearanceLibraryBrowserCtrl* browser, const QString& id);
    static void doubleClickRow(const CAppearanceLibraryBrowserCtrl* browser, const QString& id);

    /// The name in the right-hand column.
    QString shownName() const;
    /// A pixel in the middle of the preview; invalid while there is no preview yet.
    QColor shownPixel() const;

    QStringList applied;  ///< what ApplyAppearance was called with
    QStringList changed;  ///< "id key" of each call of AppearancePropertyChangedFunc
    QStringList keptIds;  ///< what MatApply announced
    int statusCalls = 0;
    int loadCalls = 0;

    using CMaterialLibraryWidget::LoadApperanceLibrary;

protected:
    void ApplyAppearance(const kiv::CAppearanceInstancePtr& appearance) override;
    void AppearancePropertyChangedFunc(const kiv::CAppearanceInstancePtr& appearance, const std::string& key) override;

protected slots:
    // Found by their signatures in place of the dialog's own.
    void onTimerOut();
    void onJsonTimerOut();
};
