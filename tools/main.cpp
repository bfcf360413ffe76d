// The companion command: looks into files, checks them and renders them, without a window.
#include "sorvaneprocess.h"

using namespace sorvane;

int main(int argc, char** argv) {
    return runSorvane(argc, argv);
}
