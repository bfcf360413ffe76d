// Prints the table of the viewer's keys for the documents.
#include <cstdio>

#include "keytable.h"

using namespace sorvane;

int main() {
    std::fputs(qPrintable(keyTableAsMarkdown()), stdout);
    return 0;
}
