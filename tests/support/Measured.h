#pragma once

#include <QFile>
#include <QImage>

#include <unistd.h>

/// The memory of this process that is in use, in MB.
inline double residentMegabytes()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// What the viewer shows; a null picture when it cannot draw.
template <typename Viewer>
QImage pictureOf(Viewer& viewer, int width, int height)
{
    const auto image = viewer.Snapshot(width, height);
    return image ? QImage(image->GetData(), width, height, QImage::Format_RGBA8888).copy() : QImage();
}
