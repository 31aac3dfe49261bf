#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Gives every file of a folder to a fuzz target once, so that all that was ever found stays repaired:
//   run-corpus FOLDER
int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const QFileInfoList inputs = QDir(QString::fromLocal8Bit(argv[1])).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& input : inputs) {
        std::printf("%s\n", qPrintable(input.fileName()));
        std::fflush(stdout);
        QFile file(input.filePath());
        if (!file.open(QIODevice::ReadOnly))
            return 1;
        const QByteArray bytes = file.readAll();
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size()));
    }
    std::printf("%d inputs\n", inputs.size());
    return inputs.isEmpty() ? 1 : 0;
}
