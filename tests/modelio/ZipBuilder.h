#pragma once

#include <QByteArray>
#include <QVector>

/// Makes archives that a sound program would not make.
struct ZipMember {
    QByteArray name;
    QByteArray bytes;
    bool encrypted = false;
};

QByteArray makeZip(const QVector<ZipMember>& members);
