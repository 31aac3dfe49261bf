#pragma once

#include <QList>
#include <QMetaMethod>
#include <QtTest>

/// Hosts and derived widgets connect by text: a signature that is nearly the same is not there. Each is SIGNAL(...) or
/// SLOT(...).
inline void checkKnownByText(const QMetaObject& meta, const QList<const char*>& texts)
{
    for (const char* text : texts) {
        const int index = meta.indexOfMethod(QMetaObject::normalizedSignature(text + 1));
        QVERIFY2(index >= meta.methodOffset(), text);
        QCOMPARE(meta.method(index).methodType() == QMetaMethod::Signal, *text == '0' + QSIGNAL_CODE);
        QVERIFY2(meta.method(index).access() != QMetaMethod::Private, text);
    }
}
