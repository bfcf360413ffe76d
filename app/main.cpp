// The viewer.
#include "viewerprocess.h"

using namespace sorvane;

int main(int argc, char** argv) {
    return runViewer(argc, argv);
}
