#pragma once

#include "HttpMessage.h"

#include <QString>

/// A minimal, honest WebDAV server over a folder: PROPFIND of depth 0 and 1, MKCOL, PUT, MOVE, DELETE, and GET from a
/// byte on. Requests are answered side by side; what they do is kept apart by the file system only.
class CDavFolder {
public:
    explicit CDavFolder(const QString& folder) : m_folder(folder) {}

    CHttpAnswer Answer(const CHttpRequest& request) const;

private:
    CHttpAnswer Propfind(const CHttpRequest& request) const;
    CHttpAnswer MakeCollection(const CHttpRequest& request) const;
    CHttpAnswer Put(const CHttpRequest& request) const;
    CHttpAnswer Move(const CHttpRequest& request) const;
    CHttpAnswer Delete(const CHttpRequest& request) const;
    CHttpAnswer Get(const CHttpRequest& request) const;

    QString LocalPath(const QString& path) const { return m_folder + path; }
    bool HasParent(const QString& path) const;

    QString m_folder;
};
