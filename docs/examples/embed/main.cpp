#include <MaterialLibraryWidget.h>

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QString data = QCoreApplication::applicationDirPath() + "/../data";
    const QString user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    kiv::CMaterialLibrary library;
    library.Open({data.toStdWString(), (data + "/textures").toStdWString(), user.toStdWString()});

    CMaterialLibraryWidget dialog(&library, false, nullptr, true, "Customer Library", true);
    dialog.SetApplyAppearanceReactor([](const kiv::CAppearanceInstancePtr& appearance) {
        qInfo("draw the element that is selected with %s", appearance->GetName().c_str());
    });
    QObject::connect(&dialog, &CMaterialLibraryWidget::MatApply, [](QString& id) { qInfo("keep %s", qPrintable(id)); });
    return dialog.exec() == QDialog::Accepted ? 0 : 1;
}
