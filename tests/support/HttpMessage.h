#pragma once

#include <QByteArray>
#include <QMap>
#include <QPair>
#include <QString>
#include <QVector>

/// One request as a server reads it.
struct CHttpRequest {
    QByteArray method;
    QString path;                          ///< decoded, without query
    QMap<QByteArray, QByteArray> headers;  ///< names in lower case
    QByteArray body;

    QByteArray Header(const char* name) const { return headers.value(name); }
};

struct CHttpAnswer {
    int status = 200;
    QVector<QPair<QByteArray, QByteArray>> headers;  ///< without Content-Length
    QByteArray body;
};
