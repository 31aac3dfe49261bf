#pragma once

#include <QByteArray>
#include <QString>

/// What the file holds; nothing when it cannot be read.
QByteArray readFile(const QString& path);

/// Writes the file, and makes the folders that lead to it; ends the program when that fails. Answers the path.
QString writeFile(const QString& path, const QByteArray& bytes);
