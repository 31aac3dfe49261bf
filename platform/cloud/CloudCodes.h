#pragma once

#include <QLatin1String>
#include <QNetworkReply>
#include <QString>

/// The codes that results carry; people read their meaning in docs/cloud.md.
namespace nuvs::code {

constexpr QLatin1String AlreadyExists("NUVS_000001");
constexpr QLatin1String NotLoggedIn("NUVS_000002");
constexpr QLatin1String FileMissing("NUVS_000005");
constexpr QLatin1String FolderMissing("NUVS_000006");
constexpr QLatin1String PathInvalid("NUVS_000007");
constexpr QLatin1String LoginRefused("NUVS_000008");
constexpr QLatin1String Redirected("NUVS_000010");
constexpr QLatin1String FolderNameEmpty("NUVS_000011");
constexpr QLatin1String FilePathEmpty("NUVS_000012");
constexpr QLatin1String OtherAccount("NUVS_000013");
constexpr QLatin1String ServerError("NUVS_100003");

}  // namespace nuvs::code

namespace nuvs {

/// Why a request was not carried out: requests for answers finish with the code, transfers end in the error.
struct SFault {
    QString code;
    QNetworkReply::NetworkError error = QNetworkReply::UnknownContentError;
};

}  // namespace nuvs
