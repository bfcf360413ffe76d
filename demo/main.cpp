// make_demonstration DIR: makes the demonstration data in DIR.
#include <cstdio>

#include "makedemonstration.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: make_demonstration DIR\n", stderr);
        return 2;
    }
    if (const Failure failure = makeDemonstration(argv[1])) {
        std::fprintf(stderr, "make_demonstration: %s\n", failure->c_str());
        return 1;
    }
    return 0;
}
