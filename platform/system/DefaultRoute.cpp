#include "DefaultRoute.h"

#include <net/if.h>
#include <net/route.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace kiv::system {

namespace {

struct Route {
    std::string interface;
    bool isDefault = false;
    unsigned long flags = 0;
};

// "eth0 00000000 010200C0 0003 0 0 0 00000000 ...": interface, destination, gateway, flags, three counts, mask.
bool parseIpv4(const std::string& line, Route& route)
{
    std::istringstream columns(line);
    unsigned long destination = 0;
    unsigned long gateway = 0;
    unsigned long mask = 0;
    std::string counts[3];
    columns >> route.interface >> std::hex >> destination >> gateway >> route.flags;
    columns >> counts[0] >> counts[1] >> counts[2] >> mask;
    route.isDefault = destination == 0 && mask == 0;
    return !columns.fail();
}

// "00...0 00 00...0 00 00...0 00000400 00000002 00000000 00000003 eth0": destination and its length, source and its
// length, gateway, three counts, flags, interface.
bool parseIpv6(const std::string& line, Route& route)
{
    std::istringstream columns(line);
    std::string destination;
    std::string source;
    std::string gateway;
    std::string counts[3];
    unsigned long length = 0;
    unsigned long sourceLength = 0;
    columns >> destination >> std::hex >> length >> source >> sourceLength >> gateway;
    columns >> counts[0] >> counts[1] >> counts[2] >> route.flags >> route.interface;
    // A route for one source only is not one for everybody.
    route.isDefault = length == 0 && sourceLength == 0;
    return !columns.fail();
}

std::string firstWord(const std::string& path)
{
    std::ifstream file(path);
    std::string word;
    file >> word;
    return word;
}

// The flags that the kernel shows here lack "running", which is the state; an interface without a carrier, like a
// tunnel, does not know its state.
bool isUp(const std::string& root, const std::string& interface)
{
    if (interface.find('/') != std::string::npos)
        return false;
    const std::string folder = root + "sys/class/net/" + interface;
    const unsigned long flags = std::strtoul(firstWord(folder + "/flags").c_str(), nullptr, 16);
    const std::string state = firstWord(folder + "/operstate");
    return (flags & IFF_UP) && !(flags & IFF_LOOPBACK) && (state == "up" || state == "unknown");
}

template <typename Parse>
bool hasDefaultRoute(const std::string& root, const char* table, Parse parse)
{
    std::ifstream file(root + table);
    for (std::string line; std::getline(file, line);) {
        Route route;
        const bool leadsOut = parse(line, route) && route.isDefault && (route.flags & RTF_UP);
        if (leadsOut && !(route.flags & RTF_REJECT) && isUp(root, route.interface))
            return true;
    }
    return false;
}

}  // namespace

bool HasDefaultRoute(const std::string& root)
{
    return hasDefaultRoute(root, "proc/net/route", parseIpv4) ||
           hasDefaultRoute(root, "proc/net/ipv6_route", parseIpv6);
}

}  // namespace kiv::system
