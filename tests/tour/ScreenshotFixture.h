#pragma once

#include "support/ScreenFixture.h"

namespace kelvo::test {

/// A fixture that keeps a picture of every screen passed, in $KELVO_TOUR or in a folder of the test.
class ScreenshotFixture : public ScreenFixture {
 protected:
    void Photograph(Screen* screen, const std::string& name) {
        // A working screen fills 82 % of a display of 1280 x 800.
        if (!screen->windowFlags().testFlag(Qt::Dialog)) screen->resize(1050, 656);
        ProcessEvents();
        const QString wanted = qEnvironmentVariable("KELVO_TOUR");
        const std::filesystem::path pictures = wanted.isEmpty() ? Path("pictures") : FromQt(wanted);
        std::filesystem::create_directories(pictures);
        EXPECT_TRUE(screen->grab().save(ToQt((pictures / (name + ".png")).string()))) << name;
    }
};

}  // namespace kelvo::test
