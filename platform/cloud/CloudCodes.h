#pragma once

#include <QLatin1String>
#include <QNetworkReply>
#include <QString>

/// The codes that results carry; people read their meaning in docs/cloud.md.
namespace nuvs::code {

constexpr int Length = 11;
constexpr QLatin1String AlreadyExists("NUVS_000001", Length);
constexpr QLatin1String NotLoggedIn("NUVS_000002", Length);
constexpr QLatin1String FileMissing("NUVS_000005", Length);
constexpr QLatin1String FolderMissing("NUVS_000006", Length);
constexpr QLatin1String PathInvalid("NUVS_000007", Length);
constexpr QLatin1String LoginRefused("NUVS_000008", Length);
constexpr QLatin1String Redirected("NUVS_000010", Length);
constexpr QLatin1String FolderNameEmpty("NUVS_000011", Length);
constexpr QLatin1String FilePathEmpty("NUVS_000012", Length);
constexpr QLatin1String OtherAccount("NUVS_000013", Length);
constexpr QLatin1String ServerError("NUVS_100003", Length);

}  // namespace nuvs::code

namespace nuvs {

/// Why a request was not carried out: requests for answers finish with the code, transfers end in the error.
struct SFault {
    QString code;
    QNetworkReply::NetworkError error = QNetworkReply::UnknownContentError;
};

}  // namespace nuvs
