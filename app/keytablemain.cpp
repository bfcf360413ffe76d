// Prints the table of the viewer's keys for the documents.
#include <cstdio>

#include "keytable.h"

int main() {
    std::fputs(qPrintable(keyTableAsMarkdown()), stdout);
    return 0;
}
