#pragma once

#include "Storage.h"

#include <nuvs/NUVSCloudSettings.h>

namespace nuvs {

/// Turns what login() was given (`account.user`, `.product`) and the address text into the account's address. False
/// for what is not followed: other schemes than http, https and file; credentials, a query or a fragment in the
/// address; a product or local user that is no plain name. An empty address is a folder of the settings' local
/// folder.
bool ReadAddress(const QString& address, const NUVSCloudSettings& settings, SAccount& account);

}  // namespace nuvs
