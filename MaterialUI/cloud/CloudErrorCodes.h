#pragma once

#include <QString>

/// Codes that the cloud storage service answers beside the status codes of the server.
namespace CloudErrorCodes {

/// Not logged in, or logged in elsewhere since.
extern const QString SessionLost;
extern const QString AlreadyExists;

/// What a code says; empty for an unknown one, such as a status of the server.
QString Message(const QString& code);

/// Notes a code with its message in the category "materialui.cloud"; does nothing for the empty one. Any thread.
void Log(const QString& code);

}  // namespace CloudErrorCodes
