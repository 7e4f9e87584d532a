#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <CLI/CLI.hpp>

#include "Tests/Monkey/Monkey.h"

/** Offered by the sanitizers' runtime, called once before it ends the program over a finding. */
extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace {

std::uint64_t seed = 1;
int steps = 4000;
const Monkey* monkeyAtWork = nullptr;

void tellHowToRepeat() {
    if (!monkeyAtWork) return;
    std::fprintf(stderr, "%smonkey: repeat with --seed %llu --steps %d\n", monkeyAtWork->report().c_str(),
                 static_cast<unsigned long long>(seed), steps);
}

helmo::CommandLine commandLineFor(const MusicFolder& music) {
    constexpr helmo::ScreenSize screens[] = {{800, 480, 1}, {480, 272, 1}, {1024, 600, 1}};
    helmo::CommandLine commandLine;
    commandLine.headless = true;
    commandLine.musicFolders = {music.path()};
    commandLine.screen = screens[seed % std::size(screens)];
    commandLine.mode = static_cast<helmo::InteractionMode>(seed % 3);
    return commandLine;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    CLI::App options("Works helmo at random and looks whether it bears it.");
    options.add_option("--seed", seed, "the same seed does the same steps");
    options.add_option("--steps", steps, "how many");
    CLI11_PARSE(options, argumentCount, arguments);

    MusicFolder music;
    helmo::HelmoApplication application(commandLineFor(music));
    if (!application.openHeadless()) return EXIT_FAILURE;
    Monkey monkey(application, music, seed);
    monkeyAtWork = &monkey;
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(tellHowToRepeat);
    const bool isWell = monkey.run(steps);
    if (!isWell) tellHowToRepeat();
    monkeyAtWork = nullptr;
    std::printf("monkey: seed %llu, %d steps, fingerprint %zx\n", static_cast<unsigned long long>(seed),
                steps, monkey.fingerprint());
    for (const auto& [screen, count] : monkey.screens()) std::printf("%8d %s\n", count, screen.c_str());
    return isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}
