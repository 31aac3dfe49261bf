#pragma once

#include "DavFolder.h"
#include "FaultScript.h"
#include "TcpSocket.h"

/// One connection of a fault server: reads requests and answers them, as the script says.
class CFaultConnection {
public:
    /// Requests without `authorization` (the header's text) are answered 401.
    CFaultConnection(int descriptor, CFaultScript& script, const CDavFolder& folder, const QByteArray& authorization);

    /// Until the peer goes or Shutdown() is called.
    void Run();
    void Shutdown() { m_socket.Shutdown(); }

private:
    enum class BodyEnd { Whole, Cut, Waiting };

    bool ServeOne();
    bool ReadHead(CHttpRequest& request);
    bool ReadBody(CHttpRequest& request);
    CHttpAnswer Duty(const CHttpRequest& request) const;
    bool Misbehave(const CHttpRequest& request, const CFault& fault);
    bool Distort(const CHttpAnswer& honest, const CFault& fault);
    bool Send(const CHttpAnswer& answer, qint64 announced = -1, BodyEnd end = BodyEnd::Whole);
    bool SendSlowly(const CHttpAnswer& answer);
    bool SendChunks(CHttpAnswer answer, int count);
    bool SendHugeBody();

    CTcpSocket m_socket;
    CFaultScript& m_script;
    const CDavFolder& m_folder;
    QByteArray m_authorization;
    QByteArray m_unread;
    int m_request = 0;  // number in the script's log
};
