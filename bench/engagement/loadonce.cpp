// Prints the peak of this process's resident memory in bytes, after loading the trajectory file named in the argument
// if there is one.
#include <cstdio>
#include <cstring>

#include <QString>

#include "etxyz.h"

using namespace sorvane;

namespace {
// Not getrusage: its peak includes the process that started this one.
long long peakBytes() {
    std::FILE* const status = std::fopen("/proc/self/status", "r");
    char line[256];
    long long kilobytes = 0;
    while (status != nullptr && std::fgets(line, sizeof line, status) != nullptr)
        if (std::strncmp(line, "VmHWM:", 6) == 0)
            std::sscanf(line + 6, "%lld", &kilobytes);
    if (status != nullptr)
        std::fclose(status);
    return kilobytes * 1024;
}
} // namespace

int main(int argc, char** argv) {
    etxyz engagement;
    if (argc > 1)
        engagement.LoadETXYZ(QString::fromLocal8Bit(argv[1]));
    std::printf("%lld\n", peakBytes());
    return argc > 1 && engagement.keyframes.isEmpty() ? 1 : 0;
}
