#pragma once

#include "WebDavServer.h"

/// Writes "apache.conf" with what belongs to it into the folder, for WebDAV over its "documents" at the port. The
/// server never runs as root; where the caller is root the folders become nobody's.
void WriteApacheConfiguration(const CWebDavSettings& settings, const QString& folder, int port);
