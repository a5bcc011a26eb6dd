#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/Doors.h"
#include "link/Link.h"
#include "link/PortDevice.h"

namespace kelvo {

/// A port made of fields. `answer` gives the opening code of each number; absent ones are PortAbsent.
class FakePort : public PortDevice {
 public:
    std::map<int, int> answer;
    std::vector<std::string> calls;
    std::vector<std::uint8_t> received;
    std::vector<std::vector<std::uint8_t>> sent;
    std::map<PortProperty, int> properties;
    std::map<PortProperty, int> refusals;
    CommTimeouts timeouts{9, 9, 9, 9, 9};
    std::string settings, advice;
    int number = 0;
    bool open = false;

    int CommPort() const override { return number; }
    int SetCommPort(int n) override {
        if (open) return PortStillOpen;
        number = n;
        calls.push_back("port " + std::to_string(n));
        return PortNoError;
    }
    int SetSettings(const std::string& text) override {
        settings = text;
        calls.push_back(text);
        return PortNoError;
    }
    int Set(PortProperty property, int value) override {
        if (refusals.contains(property)) return refusals[property];
        properties[property] = value;
        calls.push_back(std::to_string(static_cast<int>(property)) + "=" + std::to_string(value));
        return PortNoError;
    }
    int Get(PortProperty property) const override {
        const auto found = properties.find(property);
        return found == properties.end() ? 0 : found->second;
    }
    bool PortOpen() const override { return open; }
    int SetPortOpen(bool wanted) override {
        calls.push_back(wanted ? "open" : "close");
        if (!wanted) {
            open = false;
            received.clear();
            return PortNoError;
        }
        if (open) return PortAlreadyOpen;
        const int code = answer.contains(number) ? answer[number] : PortAbsent;
        open = code == PortNoError;
        return code;
    }
    std::string Advice() const override { return advice; }
    int InBufferCount() const override { return open ? static_cast<int>(received.size()) : 0; }
    void DiscardInput() override {
        received.clear();
        calls.push_back("discard");
    }
    std::vector<std::uint8_t> Input() override {
        std::vector<std::uint8_t> taken = received;
        const auto length = static_cast<std::size_t>(Get(PortProperty::InputLen));
        if (length > 0 && taken.size() > length) taken.resize(length);
        received.erase(received.begin(), received.begin() + static_cast<std::ptrdiff_t>(taken.size()));
        return taken;
    }
    int Output(std::span<const std::uint8_t> bytes) override {
        calls.push_back("send");
        sent.emplace_back(bytes.begin(), bytes.end());
        return open ? PortNoError : PortNotOpen;
    }
    std::intptr_t CommID() const override { return open ? 3 : -1; }
    CommTimeouts GetCommTimeouts() const override { return timeouts; }
    void SetCommTimeouts(const CommTimeouts& t) override { timeouts = t; }
};

/// Notes every box; a question or an input box is a fault here.
class NotedPrompts : public Prompts {
 public:
    std::vector<std::string> messages;
    std::function<void()> during;  ///< what happens while a box stands
    void Message(const std::string& text, const std::string& title, Icon) override {
        messages.push_back(title.empty() ? text : title + ": " + text);
        if (during) during();
    }
    bool Ask(const std::string& text, bool, const std::string&) override { throw std::logic_error(text); }
    std::optional<std::string> Input(const std::string& title, const std::string&, const std::string&) override {
        throw std::logic_error(title);
    }
};

class FixedClock : public Clock {
 public:
    DateTime now{2026, 11, 24, 20, 49, 5};
    DateTime Now() const override { return now; }
};

/// Timers that a test looks at and fires.
class ScriptedHost : public LinkHost {
 public:
    bool interval = false, timeout = false;
    double seconds = 1000;
    void EnableInterval(bool enabled) override { interval = enabled; }
    void EnableTimeout(bool enabled) override { timeout = enabled; }
    double SteadySeconds() const override { return seconds; }
};

/// The bytes of a text with \t as separators, plus the last byte.
inline std::vector<std::uint8_t> Bytes(const std::string& text, int last = 0x04) {
    std::vector<std::uint8_t> bytes(text.begin(), text.end());
    if (last >= 0) bytes.push_back(static_cast<std::uint8_t>(last));
    return bytes;
}

}  // namespace kelvo
