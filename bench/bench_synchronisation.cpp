// Looking for favourites that the cloud does not have, and what sending them asks of the server.
#include "CloudRequest.h"
#include "Ratios.h"

#include <CloudService.h>
#include <FaultServer.h>
#include <FavoriteMirror.h>
#include <MaterialConstants.h>

#include <LibraryGenerator.h>

#include <kiv/AppearanceLibraryParser.h>
#include <kiv/AppearanceParser.h>
#include <kiv/MaterialLibrary.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <algorithm>
#include <memory>
#include <thread>
#include <utility>

namespace {

constexpr int Few = 1000;
constexpr int Many = 4000;
constexpr int Sent = 200;
constexpr qint64 PatienceMs = 60 * 1000;

// Favourites without textures, and the records of all but the first: a folder that was synchronised before.
class CProfile {
public:
    explicit CProfile(int count)
    {
        const std::wstring data = QStringLiteral(MATERIAL_DATA_DIR).toStdWString();
        m_library.Open({data, data + L"/textures", m_folder.path().toStdWString()});
        const auto generated = std::make_shared<kiv::CAppearanceLibrary>();
        kiv::CAppearanceLibraryParser(GetManager())
            .AppearanceLibraryFromString(generated, GenerateLibrary({count}), "");
        generated->SetId(FAVORITE_LIBRARY_NAME);
        generated->SetName(FAVORITE_LIBRARY_NAME);
        QDir().mkpath(CFavoriteMirror(GetManager()).Folders().records());
        bool isFirst = true;
        for (const auto& entry : *generated) {
            entry.second->GetDiffuseTexture()->SetTextureFile({});
            Write(*generated, entry.first, !std::exchange(isFirst, false));
        }
        GetManager().AddUserAppearanceLibrary(generated);
    }

    kiv::CAppearanceLibraryManager& GetManager() { return *m_library.GetMaterialManager(); }

private:
    void Write(const kiv::CAppearanceLibrary& library, const kiv::String& id, bool isRecorded)
    {
        const CloudFolders folders = CFavoriteMirror(GetManager()).Folders();
        const QString name = QString::fromStdString(id);
        const std::string text = kiv::CAppearanceParser(GetManager()).AppearanceToString(library.FindInstance(id));
        QFile document(folders.document(name));
        if (!document.open(QIODevice::WriteOnly) || document.write(text.data(), qint64(text.size())) < 0)
            qFatal("cannot write %s", qPrintable(document.fileName()));
        document.close();
        if (isRecorded && !document.copy(folders.record(name)))
            qFatal("cannot write %s", qPrintable(folders.record(name)));
    }

    QTemporaryDir m_folder;
    kiv::CMaterialLibrary m_library;
};

CProfile& profile(int count)
{
    static CProfile few(Few);
    static CProfile many(Many);
    return count == Few ? few : many;
}

// The same number of favourites each time.
void collect(benchmark::State& state, int count)
{
    for ([[maybe_unused]] auto _ : state) {
        for (int done = 0; done < Many; done += count) {
            CFavoriteMirror mirror(profile(count).GetManager());
            if (mirror.Collect().documents.size() != 1)
                state.SkipWithError("one favourite is new");
        }
    }
}

double readingsOfTwoPasses()
{
    CFavoriteMirror mirror(profile(Many).GetManager());
    (void)mirror.Collect();
    (void)mirror.Collect();
    return mirror.CountReadings();
}

bool waitUntilSent()
{
    CCloudService& cloud = CCloudService::Instance();
    QElapsedTimer clock;
    clock.start();
    while (cloud.GetStatus().GetWaiting() > 0 && clock.elapsed() < PatienceMs) {
        cloud.PeriodicStep();
        std::this_thread::yield();
    }
    return cloud.GetStatus().Get().succeeded == Sent;
}

// Requests that are no transfer, with those that look for the folders and make them.
double requestsBesideTransfers()
{
    CFaultServer server;
    CProfile sender(Sent);
    const CloudFolders folders = CFavoriteMirror(sender.GetManager()).Folders();
    QDir(folders.records()).removeRecursively();
    CCloudService& cloud = CCloudService::Instance();
    cloud.Open(folders);
    (void)CloudRequests::Login({CFaultServer::User, CFaultServer::Password, server.GetAddress()}).Wait();
    (void)server.GetScript().TakeLog();
    const CFavoriteMirror::Files files = CFavoriteMirror(sender.GetManager()).Collect();
    cloud.GetStatus().Set({files.documents.size(), 0, 0});
    cloud.StartUpload(files.documents, files.textures);
    if (!waitUntilSent())
        qFatal("%d of %d favourites were sent", cloud.GetStatus().Get().succeeded, Sent);
    const auto log = server.GetScript().TakeLog();
    (void)CloudRequests::Logout().Wait();
    return double(std::count_if(log.begin(), log.end(), [](const auto& record) { return record.method != "PUT"; }));
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    benchmark::RegisterBenchmark("4,000", collect, Many)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("1,000 four times", collect, Few)->Unit(benchmark::kMillisecond);
    constexpr int Once = 8;  // a few look for the folders and make them; the rest is one for each favourite
    return runBenchmarks(
        argc, argv, {{"collecting 4,000 favourites / 1,000 four times", "4,000", "1,000 four times", 1.5}},
        {{"documents read in two passes over unchanged ones", readingsOfTwoPasses(), Many - 1, 1},
         {"requests beside the transfers of 200 favourites", requestsBesideTransfers(), Sent + Once, 1}});
}
