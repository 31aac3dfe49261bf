// Sending a large file through the cloud service against curl sending it to the same server, on loopback.
// MATERIAL_BENCH_CLOUD_MIB sets its size in MiB; 1024 is what the claim is about.
#include "CloudRequest.h"
#include "Ratios.h"

#include <WebDavServer.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStorageInfo>
#include <QTextCodec>

#include <map>
#include <random>

namespace {

constexpr qint64 MiB = 1024 * 1024;
constexpr int FilesOnDisk = 6;  // the file, two copies on each of two servers, one being sent
constexpr double MemoryMiB = 32;

qint64 fileBytes()
{
    const int wanted = qEnvironmentVariableIntValue("MATERIAL_BENCH_CLOUD_MIB");
    return (wanted > 0 ? wanted : 1024) * MiB;
}

// In memory where there is room: a disk is slower than either of the two.
QString place()
{
    const QStorageInfo memory(QStringLiteral("/dev/shm"));
    return memory.isReady() && memory.bytesAvailable() > (FilesOnDisk + 2) * fileBytes() ? memory.rootPath()
                                                                                         : QDir::tempPath();
}

// A file of bytes that nothing can press together.
class CLargeFile {
public:
    CLargeFile() : m_folder(place() + QStringLiteral("/bench-cloud-XXXXXX"))
    {
        QFile file(GetPath());
        std::mt19937_64 random(1);  // NOLINT: the same each time
        std::vector<quint64> block(MiB / sizeof(quint64));
        bool written = file.open(QIODevice::WriteOnly);
        for (qint64 bytes = 0; written && bytes < fileBytes(); bytes += MiB) {
            std::generate(block.begin(), block.end(), random);
            written = file.write(reinterpret_cast<const char*>(block.data()), MiB) == MiB;
        }
        if (!written)
            qFatal("cannot write %s", qPrintable(GetPath()));
    }

    QString GetPath() const { return m_folder.filePath(QStringLiteral("texture.bin")); }

private:
    QTemporaryDir m_folder;
};

const CLargeFile& largeFile()
{
    static const CLargeFile file;
    return file;
}

CWebDavSettings settingsOf(CWebDavSettings::Program program)
{
    CWebDavSettings settings;
    settings.program = program;
    settings.place = place();
    return settings;
}

const CWebDavServer& server(CWebDavSettings::Program program)
{
    static std::map<CWebDavSettings::Program, std::unique_ptr<CWebDavServer>> servers;
    auto& found = servers[program];
    if (!found)
        found = std::make_unique<CWebDavServer>(settingsOf(program));
    if (!found->GetError().isEmpty())
        qFatal("%s", qPrintable(found->GetError()));
    return *found;
}

bool logIn(CWebDavSettings::Program program)
{
    const CWebDavSettings settings = settingsOf(program);
    (void)CloudRequests::Logout().Wait();
    const CCloudAccount account{settings.user, settings.password, server(program).GetAddress()};
    return CloudRequests::Login(account).Wait().Told() == QLatin1String("done");
}

void sendByService(benchmark::State& state, CWebDavSettings::Program program)
{
    const QString path = largeFile().GetPath();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        if (!logIn(program))
            state.SkipWithError("no login");
        state.ResumeTiming();
        if (CloudRequests::Upload({}, path).Wait().Told() != QLatin1String("done"))
            state.SkipWithError("not sent");
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * fileBytes());
}

void sendByCurl(benchmark::State& state, CWebDavSettings::Program program)
{
    const CWebDavSettings settings = settingsOf(program);
    const QStringList arguments = {"-sS",
                                   "--fail",
                                   "--user",
                                   settings.user + ':' + settings.password,
                                   "--upload-file",
                                   largeFile().GetPath(),
                                   server(program).GetAddress() + "curl.bin"};
    for ([[maybe_unused]] auto _ : state)
        if (QProcess::execute(QStringLiteral("curl"), arguments) != 0)
            state.SkipWithError("curl failed");
    state.SetBytesProcessed(int64_t(state.iterations()) * fileBytes());
}

// The most memory that the process ever had at once, in MiB.
double peakMiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("VmHWM:") + 6).simplified().split(' ')[0].toDouble() / 1024;
}

double memoryOfOneUpload()
{
    if (!logIn(CWebDavSettings::Rclone))
        return -1;
    const double before = peakMiB();
    return CloudRequests::Upload({}, largeFile().GetPath()).Wait().Told() == QLatin1String("done") ? peakMiB() - before
                                                                                                   : 2 * MemoryMiB;
}

void compareWith(CWebDavSettings::Program program, const std::string& name, std::vector<RatioClaim>& claims)
{
    if (!CWebDavServer::IsInstalled(program))
        return;
    benchmark::RegisterBenchmark(("service to " + name).c_str(), sendByService, program)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->UseRealTime();
    benchmark::RegisterBenchmark(("curl to " + name).c_str(), sendByCurl, program)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->UseRealTime();
    claims.push_back({"a file of " + std::to_string(fileBytes() / MiB) + " MiB to " + name + " / curl",
                      "service to " + name, "curl to " + name, 1.3});
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    std::vector<RatioClaim> claims;
    compareWith(CWebDavSettings::Rclone, "rclone", claims);
    compareWith(CWebDavSettings::Apache, "Apache", claims);
    if (claims.empty()) {
        std::printf("neither rclone nor apache2 is installed\n");
        return 1;
    }
    // Before anything else, since the highest mark of a process never falls.
    const double growth = memoryOfOneUpload();
    return runBenchmarks(argc, argv, claims, {{"memory while sending, MiB", growth, MemoryMiB, 1}});
}
