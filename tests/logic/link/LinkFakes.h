#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "app/AppState.h"
#include "link/Link.h"
#include "link/PortDevice.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {

/// A port made of fields. `answer` gives the opening code of each number; absent ones are PortAbsent.
class FakePort : public PortDevice {
 public:
    std::map<int, int> answer;
    std::vector<std::string> calls;
    std::vector<std::uint8_t> received;
    CommTimeouts timeouts{9, 9, 9, 9, 9};
    int number = 0;
    bool open = false;

    int CommPort() const override { return number; }
    int SetCommPort(int n) override {
        if (open) return PortStillOpen;
        number = n;
        return Note("port " + std::to_string(n));
    }
    int SetSettings(const std::string& text) override { return Note(text); }
    int Set(PortProperty property, int value) override {
        return Note(std::to_string(static_cast<int>(property)) + "=" + std::to_string(value));
    }
    int Get(PortProperty) const override { return 0; }
    bool PortOpen() const override { return open; }
    int SetPortOpen(bool wanted) override {
        Note(wanted ? "open" : "close");
        if (wanted && open) return PortAlreadyOpen;
        const int code = !wanted ? PortNoError : answer.contains(number) ? answer[number] : PortAbsent;
        open = wanted && code == PortNoError;
        if (!wanted) received.clear();
        return code;
    }
    std::string Advice() const override { return {}; }
    int InBufferCount() const override { return open ? static_cast<int>(received.size()) : 0; }
    void DiscardInput() override {
        received.clear();
        Note("discard");
    }
    std::vector<std::uint8_t> Input() override { return std::exchange(received, {}); }
    int Output(std::span<const std::uint8_t> bytes) override {
        Note("send " + Joined(std::vector<int>(bytes.begin(), bytes.end())));
        return open ? PortNoError : PortNotOpen;
    }
    std::intptr_t CommID() const override { return open ? 3 : -1; }
    CommTimeouts GetCommTimeouts() const override { return timeouts; }
    void SetCommTimeouts(const CommTimeouts& t) override { timeouts = t; }

 private:
    int Note(const std::string& call) {
        calls.push_back(call);
        return PortNoError;
    }
};

/// Notes every message; any other box is a fault here.
class NotedPrompts : public ScriptedPrompts {
 public:
    std::vector<std::string> messages;
    std::function<void()> during;  ///< what happens while a box stands
    void Message(const std::string& text, const std::string& title, Icon) override {
        messages.push_back(title.empty() ? text : title + ": " + text);
        if (during) during();
    }
};

/// Timers that a test looks at and fires.
class ScriptedHost : public LinkHost {
 public:
    bool interval = false, timeout = false;
    void EnableInterval(bool enabled) override { interval = enabled; }
    void EnableTimeout(bool enabled) override { timeout = enabled; }
};

/// The bytes of a text with \t as separators, plus the last byte.
inline std::vector<std::uint8_t> Bytes(const std::string& text, std::uint8_t last = 0x04) {
    std::vector<std::uint8_t> bytes(text.begin(), text.end());
    bytes.push_back(last);
    return bytes;
}

/// A link over fakes, with COM1 in its place.
class LinkBench : public testing::Test {
 protected:
    LinkBench() { device.answer = {{1, PortNoError}}; }
    void Arrive(const std::vector<std::uint8_t>& bytes) {
        device.received.insert(device.received.end(), bytes.begin(), bytes.end());
        link.BytesArrived();
    }
    /// A whole second passes: the tick of the polling.
    void Poll() {
        clock.steady += 1;
        if (host.interval) link.IntervalTick();
    }

    /// Every channel at once, "10111": a 1 is on.
    void SetChannels(const char* on) {
        for (std::size_t i = 0; i < state.Channel.size(); ++i)
            state.Channel[i] = on[i] == '1' ? 1 : 0;
    }

    AppState state;
    FakePort device;
    NotedPrompts prompts;
    FixedClock clock;
    ScriptedHost host;
    CommPort port{device, prompts, "/dev/null/kelvo/CommPort.ini"};
    Link link{state, port, device, prompts, clock, host};
};

}  // namespace kelvo::test
