#include "AppearanceMime.h"

#include <kiv/AppearanceParser.h>

#include <QMimeData>

namespace {

const QString s_idFormat = QStringLiteral("application/x-kiv-appearance-id");
const QString s_documentFormat = QStringLiteral("application/x-kiv-appearance+json");

}  // namespace

std::unique_ptr<QMimeData> AppearanceMime::Make(const kiv::CAppearanceInstancePtr& appearance,
                                                const kiv::CAppearanceLibraryManager& manager)
{
    auto data = std::make_unique<QMimeData>();
    data->setData(s_idFormat, QString::fromLocal8Bit(appearance->GetId().c_str()).toUtf8());
    const kiv::String document = kiv::CAppearanceParser(manager).AppearanceToString(appearance);
    data->setData(s_documentFormat, QByteArray(document.data(), int(document.size())));
    return data;
}

bool AppearanceMime::IsIn(const QMimeData* data)
{
    return data && data->hasFormat(s_idFormat);
}

kiv::String AppearanceMime::IdOf(const QMimeData* data)
{
    return data ? QString::fromUtf8(data->data(s_idFormat)).toLocal8Bit().toStdString() : kiv::String();
}

kiv::String AppearanceMime::DocumentOf(const QMimeData* data)
{
    return data ? data->data(s_documentFormat).toStdString() : kiv::String();
}
