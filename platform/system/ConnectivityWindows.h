#pragma once

namespace kiv::system {

/// Whether what the system says of its networks (error code and flags) means that exactly one kind of them is alive.
/// Two at once count as none: which of them leads out is not known.
bool MeansOneNetwork(unsigned long error, unsigned long flags);

}  // namespace kiv::system
