// Makes the demonstration data in a directory, without the companion command, which takes far longer to build.
#include <iostream>

#include "makedemonstration.h"

using namespace sorvane;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_demonstration DIR\n";
        return 2;
    }
    if (const auto failure = sorvane::makeDemonstration(argv[1])) {
        std::cerr << "make_demonstration: " << *failure << '\n';
        return 2;
    }
    return 0;
}
