#pragma once

#include "support/ScreenFixture.h"

namespace kelvo::test {

/// A fixture that keeps a picture of every screen passed, in $KELVO_TOUR or in a folder of the test. $KELVO_TOUR_SIZE
/// ("1024x720") sets the size of working screens, $KELVO_TOUR_DARK a dark desktop.
class ScreenshotFixture : public ScreenFixture {
 protected:
    void Photograph(Screen* screen, const std::string& name) {
        // A working screen fills 82 % of a display of 1280 x 800.
        const QStringList size = qEnvironmentVariable("KELVO_TOUR_SIZE", QStringLiteral("1050x656")).split(u'x');
        if (!screen->windowFlags().testFlag(Qt::Dialog)) screen->resize(size.first().toInt(), size.last().toInt());
        ProcessEvents();
        const QString wanted = qEnvironmentVariable("KELVO_TOUR");
        const std::filesystem::path pictures = wanted.isEmpty() ? Path("pictures") : FromQt(wanted);
        std::filesystem::create_directories(pictures);
        EXPECT_TRUE(screen->grab().save(ToQt((pictures / (name + ".png")).string()))) << name;
    }
};

}  // namespace kelvo::test
