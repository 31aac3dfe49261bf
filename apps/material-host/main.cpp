#include "HostOptions.h"
#include "HostTour.h"
#include "MainWindow.h"

#include <GlobalConfig.h>

#include <QApplication>
#include <QDir>
#include <QLocale>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QTranslator>

#include <iostream>
#include <memory>

namespace {

/// The host's own texts and those of Qt's standard dialogs.
void loadTranslations(QApplication& application, const QString& language)
{
    QLocale::setDefault(language == "zh" ? QLocale(QLocale::Chinese, QLocale::China) : QLocale(QLocale::English));
    for (const char* name : {"material-host", "standard-dialogs"}) {
        auto* translator = new QTranslator(&application);
        if (translator->load(QString("%1/%2_%3.qm").arg(QCoreApplication::applicationDirPath(), name, language)))
            QCoreApplication::installTranslator(translator);
    }
}

bool openLibrary(kiv::CMaterialLibrary& library, const HostOptions& options)
{
    QDir().mkpath(options.profile);
    library.GetMaterialManager()->SetLanguage(options.language.toStdString());
    if (library.Open(
            {options.data.toStdWString(), (options.data + "/textures").toStdWString(), options.profile.toStdWString()}))
        return true;
    std::cerr << "material-host: no material library in \"" << qPrintable(options.data)
              << "\"; name its folder with --data\n";
    for (const kiv::CParseError& error : library.GetReport())
        std::cerr << "  " << error.Text() << '\n';
    return false;
}

/// The tour must not depend on, or change, what the user collected.
std::unique_ptr<QTemporaryDir> tourProfile(HostOptions& options)
{
    auto folder = std::make_unique<QTemporaryDir>();
    options.profile = folder->path();
    return folder;
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("material-host");
    QApplication::setApplicationVersion(MATERIAL_HOST_VERSION);
    // Narrow texts of the material model are UTF-8 here, also where the environment names no locale.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    GMaterialUI::CGlobalConfig::SetMaterialNameEditable(true);
    HostOptions options = HostOptions::fromArguments(QCoreApplication::arguments());
    loadTranslations(application, options.language);

    std::unique_ptr<QTemporaryDir> profile;
    if (!options.tour.isEmpty())
        profile = tourProfile(options);
    kiv::CMaterialLibrary library;
    if (!openLibrary(library, options))
        return 1;
    if (!options.tour.isEmpty())
        return HostTour(library, options).run();
    MainWindow window(library, options);
    window.show();
    window.start(options.project);
    window.showReport();
    return QApplication::exec();
}
