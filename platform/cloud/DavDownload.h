#pragma once

#include "DavSession.h"

#include <QSaveFile>

namespace nuvs {

/// Fetches a file beside its place and puts it there when it is whole. A connection that breaks in the middle is taken
/// up where it broke, as long as the server can tell that the file is still the same.
class CDavDownload : public std::enable_shared_from_this<CDavDownload> {
public:
    CDavDownload(DavSessionPtr session, const QString& id, const QString& path, AnswerPtr<NUVSBaseInfo> answer);

    void Start();

private:
    enum class ETrouble { None, LocalFile, WrongRange, WrongContent };

    void Get();
    void GetDone(const SDavAnswer& got);
    bool TakeData(QNetworkReply& reply);
    qint64 Largest() const;
    bool TakeHead(const QNetworkReply& reply);
    bool TakeWhole(const QNetworkReply& reply);
    bool TakeRest(const QNetworkReply& reply);
    bool IsWhole(const SDavAnswer& got) const;
    bool CanTryAgain(const SDavAnswer& got) const;
    void Confirm();
    void Keep();
    void Forget();
    void Fail(const SDavAnswer& got);

    const DavSessionPtr m_session;
    const QString m_id;
    QSaveFile m_file;
    const AnswerPtr<NUVSBaseInfo> m_answer;
    int m_attempts = 0;
    bool m_hasHead = false;  ///< of this attempt
    ETrouble m_trouble = ETrouble::None;
    QByteArray m_validator;
    qint64 m_received = 0;
    qint64 m_total = -1;
};

}  // namespace nuvs
