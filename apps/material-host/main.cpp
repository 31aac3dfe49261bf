#include "CloudAccount.h"
#include "HostOptions.h"
#include "HostTour.h"
#include "MainWindow.h"
#include "SignIn.h"

#include <GlobalConfig.h>

#include <kiv/system/Connectivity.h>
#include <nuvs/NUVSCloudSettings.h>

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

/// Where there is no network, tests and tours say whether there is one.
void setUpNetwork(const HostOptions& options)
{
    NUVSCloudSettings settings;
    settings.localFolder = options.cloudFolder.isEmpty() ? options.profile + "/cloud" : options.cloudFolder;
    setNUVSCloudSettings(settings);
    // A tour shows the same on a machine without a way out.
    if (!options.tour.isEmpty())
        kiv::system::OverrideConnectivity(true);
    else if (!kiv::system::OverrideConnectivityFromEnvironment())
        std::cerr << "material-host: MATERIAL_NETWORK is neither \"online\" nor \"offline\"\n";
}

int signIn(QApplication& application, const HostOptions& options)
{
    CloudAccount account(options);
    LoginAccountInfo info;
    if (!account.GetLoginInfo(info)) {
        std::cerr << "material-host: the password is to be in MATERIAL_CLOUD_PASSWORD\n";
        return 1;
    }
    SignIn::begin(info, &application, [](const QString& reason) {
        (reason.isEmpty() ? std::cout : std::cerr)
            << (reason.isEmpty() ? "Signed in." : qPrintable(reason)) << std::endl;
        QCoreApplication::exit(reason.isEmpty() ? 0 : 1);
    });
    return QApplication::exec();
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
    setUpNetwork(options);
    if (options.signIn)
        return signIn(application, options);
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
