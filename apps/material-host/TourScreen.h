#pragma once

#include <QPixmap>
#include <QString>

/// Pictures of the whole screen, as a person sees it, with the mouse pointer where the tour left it.
namespace TourScreen {

QPixmap picture();
/// False when the picture cannot be written.
bool save(const QString& path);

}  // namespace TourScreen
