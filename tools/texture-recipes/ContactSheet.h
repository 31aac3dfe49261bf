#pragma once

#include <QStringList>

/// Draws the textures of the folder, each tiled twice in both directions so that seams show, with their names, to
/// `file`. False when it cannot be saved.
bool drawContactSheet(const QStringList& names, const QString& folder, const QString& file);
