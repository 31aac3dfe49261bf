// Making a normal map against ImageMagick doing an equivalent filter on the same file, as a process of its own: grey,
// smoothed by the same Gaussian, and the two Sobel filters of the result.
#include "Ratios.h"

#include <kiv/Image.h>

#include <QApplication>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>

namespace {

constexpr int Size = 2048;
constexpr double Scale = 8;
constexpr double Blur = 2;  // at 1024 pixels: 4 of this picture's pixels

/// Waves and grain in three colours, uncompressed, so that decoding does not decide.
class Picture {
public:
    Picture()
    {
        QImage image(Size, Size, QImage::Format_RGB32);
        unsigned random = 1;
        for (int y = 0; y < Size; ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < Size; ++x) {
                random = random * 1664525 + 1013904223;
                const int grain = int(random >> 27);
                line[x] = qRgb(wave(x) + grain, wave(y) + grain, wave(x + y) + grain);
            }
        }
        m_written = m_folder.isValid() && image.save(path());
    }

    bool isWritten() const { return m_written; }
    QString path() const { return m_folder.filePath(QStringLiteral("photo.bmp")); }

private:
    static int wave(int place) { return int(110 + 100 * std::sin(place * 0.07)); }

    QTemporaryDir m_folder;
    bool m_written = false;
};

void product(benchmark::State& state, const Picture& picture)
{
    const std::wstring path = picture.path().toStdWString();
    for ([[maybe_unused]] auto _ : state) {
        if (!kiv::CImage::CreateNormalMapFromFile(path, Scale, Blur))
            state.SkipWithError("no normal map");
    }
}

void otherProgram(benchmark::State& state, const QString& program, const Picture& picture)
{
    const QStringList arguments = {picture.path(),
                                   "-colorspace",
                                   "gray",
                                   "-blur",
                                   "0x4",  //
                                   "(",
                                   "+clone",
                                   "-morphology",
                                   "Convolve",
                                   "Sobel:0",
                                   ")",
                                   "(",
                                   "-clone",
                                   "0",
                                   "-morphology",
                                   "Convolve",
                                   "Sobel:90",
                                   ")",
                                   "null:"};
    for ([[maybe_unused]] auto _ : state) {
        if (QProcess::execute(program, arguments) != 0)
            state.SkipWithError("the other program failed");
    }
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const Picture picture;
    if (!picture.isWritten()) {
        std::fprintf(stderr, "cannot write the picture to measure with\n");
        return 1;
    }
    benchmark::RegisterBenchmark("normalMap", [&](auto& state) { product(state, picture); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    const QString program = QStandardPaths::findExecutable(QStringLiteral("convert"));
    if (program.isEmpty())
        std::printf("ImageMagick's convert is not installed: not compared\n");
    else
        benchmark::RegisterBenchmark("imageMagick", [&](auto& state) { otherProgram(state, program, picture); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    return runBenchmarks(
        argc, argv,
        {{"normal map of 2048 x 2048 / ImageMagick, blur and two Sobel filters", "normalMap", "imageMagick", 1.0}});
}
