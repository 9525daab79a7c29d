// kirolane_soak mutants|kills|openings CLIPS COUNT SEED: a long run of the whole program on displays that
// nobody sees.
// bench/soak/run builds and starts it.

#include "soak.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include <unistd.h>

int main(int argc, char** argv) {
    using namespace kirolane::soak;
    bool holds = false;
    try {
        const std::string_view name = argc == 5 ? argv[1] : "";
        const Run run{argv[argc > 2 ? 2 : 0], argc == 5 ? std::atoi(argv[3]) : 0,
                      argc == 5 ? static_cast<unsigned>(std::atoll(argv[4])) : 0};
        std::setvbuf(stdout, nullptr, _IOLBF, 0);
        if (name == "mutants")
            holds = Mutants(run);
        else if (name == "kills")
            holds = Kills(run);
        else if (name == "openings")
            holds = Openings(run);
        else
            std::fprintf(stderr,
                         "kirolane_soak: usage: kirolane_soak mutants|kills|openings CLIPS COUNT SEED\n");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "kirolane_soak: %s\n", failure.what());
    }
    std::fflush(stdout);
    _exit(holds ? 0 : 1); // as the program itself ends: the players are not taken apart
}
