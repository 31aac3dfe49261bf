#include "RegularFile.h"

#include <sys/stat.h>

namespace kiv::system {

long long RegularFileSize(const MachinePath& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return -1;
    return status.st_size;
}

}  // namespace kiv::system
