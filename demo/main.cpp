// make_demonstration DIR [ROOT]: makes the demonstration data in DIR, to be used there or with its tree at ROOT.
#include <cstdio>

#include "makedemonstration.h"

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fputs("usage: make_demonstration DIR [ROOT]\n", stderr);
        return 2;
    }
    if (const Failure failure = makeDemonstration(argv[1], argc == 3 ? argv[2] : "")) {
        std::fprintf(stderr, "make_demonstration: %s\n", failure->c_str());
        return 1;
    }
    return 0;
}
