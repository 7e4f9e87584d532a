#pragma once

#include <optional>

#include <gtest/gtest.h>

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/RunLoop.h"
#include "Tests/Support/FakeMediaLibrary.h"

namespace zornic {

/** A main loop on a clock of its own and an empty library, which is the default one. */
class MediaFixture : public testing::Test {
protected:
    MediaFixture() { MediaLibrary::setDefaultLibrary(library); }
    ~MediaFixture() override { MediaLibrary::setDefaultLibrary(nullptr); }

    /** Lets the time pass, timer by timer. */
    void pass(double seconds) {
        const auto end = clock.now() + toDuration(Seconds(seconds));
        for (auto due = loop->nextDue(); due && *due <= end; due = loop->nextDue()) {
            clock.moveTo(std::max(clock.now(), *due));
            loop->runDue();
        }
        clock.moveTo(end);
    }
    /** Finishes what runs in the background, and what that leads to. */
    void settle() {
        do BackgroundWork::waitUntilIdle(std::chrono::seconds(10));
        while (loop->runDue() || !BackgroundWork::isIdle());
    }

    ManualClock clock;
    std::optional<RunLoop> loop{std::in_place, clock};
    const std::shared_ptr<FakeMediaLibrary> library = make<FakeMediaLibrary>();
};

}  // namespace zornic
