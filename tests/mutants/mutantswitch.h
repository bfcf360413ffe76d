// Lets one build hold many one-line changes: the changed places ask here whether their change is the one to show.
// Only the preset `mutate` includes it, ahead of every source.
#pragma once

#include <cstdio>
#include <cstdlib>

inline bool isMutantChosen(unsigned number) {
    // Tells the first run, in which no change shows, which places its tests come by.
    if (const char* const reached = std::getenv("SORVANE_MUTANTS_REACHED"))
        if (std::FILE* const file = std::fopen(reached, "a")) {
            std::fprintf(file, "%u\n", number);
            std::fclose(file);
        }
    const char* const chosen = std::getenv("SORVANE_MUTANT");
    return chosen != nullptr && std::strtoul(chosen, nullptr, 10) == number;
}

template <unsigned number> bool mutantIs() {
    static const bool is = isMutantChosen(number);
    return is;
}
