#pragma once

#include "DavSession.h"

namespace nuvs {

/// Opens a session: asks for the address, makes the root when missing and the mark in it, and takes other marks away.
class CDavLogin : public std::enable_shared_from_this<CDavLogin> {
public:
    CDavLogin(DavSessionPtr session, AnswerPtr<NUVSLoginInfo> answer, std::function<void()> opened);

    void Start();

private:
    void MakeMark(bool isRootMade);
    void MakeRoot();
    void TakeMarksAway(QStringList marks);
    void Refuse(const SDavAnswer& got);
    void MakeFolder(const QUrl& url, const DavHandler& handler);

    const DavSessionPtr m_session;
    const AnswerPtr<NUVSLoginInfo> m_answer;
    std::function<void()> m_opened;
};

}  // namespace nuvs
