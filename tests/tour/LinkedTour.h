#pragma once

#include "devices/LinkQt.h"
#include "support/Patience.h"
#include "support/SimulatedInterface.h"
#include "tour/ScreenshotFixture.h"

namespace kelvo::test {

/// The real screens on the serial port of the machine and an interface made of software. Its seconds are the test's:
/// each request is made, each tick fired, at once.
class LinkedTour : public ScreenshotFixture {
 protected:
    void SetUp() override {
        context.link = &link;
        linkQt_.SetTimeoutMs(PatienceMs);
        ScreenFixture::SetUp();
    }
    void TearDown() override {
        link.StopLink();
        context.link = nullptr;
        ScreenFixture::TearDown();
    }

    std::string Com(int number) const { return ports_ + "COM" + std::to_string(number); }
    /// Puts an interface on COM1 and tells it, line by line.
    void PlugIn(std::initializer_list<const char*> orders) {
        interface_ = std::make_unique<SimulatedInterface>(Com(1));
        for (const char* order : orders)
            interface_->Execute(order);
    }
    /// A frame through the real line.
    void Frame() {
        const auto good = link.Counts().good;
        link.IntervalTick();
        ASSERT_TRUE(QTest::qWaitFor([&] { return link.Counts().good > good; }, PatienceMs));
    }

    const std::string ports_ =
        (std::filesystem::temp_directory_path() / ("kelvo-tour-" + Unique()) / "ports/").string();
    LinkQt linkQt_{state, prompts, clock, PortNames(ports_, "/nonexistent/"), ports_ + "../CommPort.ini"};
    Link& link = linkQt_.GetLink();
    std::unique_ptr<SimulatedInterface> interface_;
};

}  // namespace kelvo::test
