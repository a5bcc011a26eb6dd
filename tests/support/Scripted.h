#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>

#include "core/Clock.h"
#include "core/Dialogs.h"

namespace kelvo::test {

/// Prompts that answer from a script. A question that the script does not expect fails the test, and so does one
/// that never came.
class ScriptedPrompts : public Prompts {
 public:
    ~ScriptedPrompts() override {
        for (const Line& line : script_)
            ADD_FAILURE() << "never shown: " << line.text;
    }

    void ExpectMessage(std::string text) { script_.push_back({Kind::Message, std::move(text), {}}); }
    void ExpectAsk(std::string text, bool answer) {
        script_.push_back({Kind::Ask, std::move(text), answer ? "yes" : "no"});
    }
    void ExpectReplace(const std::string& file, bool answer) {
        ExpectAsk(file + "   This file already exists, would you like to replace it?", answer);
    }
    /// A question that only its buttons answer, since No loses something.
    void ExpectAskToSave(std::string text, bool answer) {
        script_.push_back({Kind::AskToSave, std::move(text), answer ? "yes" : "no"});
    }
    void ExpectInput(std::string title, std::optional<std::string> answer) {
        script_.push_back({Kind::Input, std::move(title), std::move(answer)});
    }
    bool Done() const { return script_.empty(); }

    void Message(const std::string& text, const std::string& title, Icon icon) override {
        lastTitle = title;
        lastIcon = icon;
        Take(Kind::Message, text);
    }
    bool Ask(const std::string& text, bool defaultNo, const std::string& title) override {
        lastTitle = title;
        lastDefaultNo = defaultNo;
        return Take(Kind::Ask, text) == "yes";
    }
    bool AskToSave(const std::string& text, const std::string& title) override {
        lastTitle = title;
        lastDefaultNo = false;
        return Take(Kind::AskToSave, text) == "yes";
    }
    std::optional<std::string> Input(const std::string& title, const std::string&,
                                     const std::string& initial) override {
        lastInitial = initial;
        return Take(Kind::Input, title);
    }

    std::string lastTitle, lastInitial;
    Icon lastIcon = Icon::None;
    bool lastDefaultNo = false;

 private:
    enum class Kind { Message, Ask, AskToSave, Input };
    struct Line {
        Kind kind;
        std::string text;
        std::optional<std::string> answer;
    };

    std::optional<std::string> Take(Kind kind, const std::string& text) {
        if (script_.empty()) {
            ADD_FAILURE() << "not expected: " << text;
            return std::nullopt;
        }
        const Line line = script_.front();
        script_.pop_front();
        EXPECT_EQ(static_cast<int>(line.kind), static_cast<int>(kind)) << text;
        EXPECT_EQ(line.text, text);
        return line.answer;
    }

    std::deque<Line> script_;
};

/// A file chooser that hands out names from a script; none is a cancel.
class ScriptedFiles : public FileChooser {
 public:
    ~ScriptedFiles() override { EXPECT_TRUE(names_.empty()) << names_.size() << " file names were never asked for"; }
    void Expect(std::optional<std::string> name) { names_.push_back(std::move(name)); }
    std::optional<std::string> Open(const FileRequest& request) override { return Take(request); }
    std::optional<std::string> Save(const FileRequest& request) override { return Take(request); }
    FileRequest last;

 private:
    std::optional<std::string> Take(const FileRequest& request) {
        last = request;
        if (names_.empty()) {
            ADD_FAILURE() << "a file was asked for: " << request.filter;
            return std::nullopt;
        }
        auto name = names_.front();
        names_.pop_front();
        return name;
    }
    std::deque<std::optional<std::string>> names_;
};

class FixedClock : public Clock {
 public:
    DateTime now{2026, 11, 24, 9, 5, 7};
    double steady = 1000;
    DateTime Now() const override { return now; }
    double SteadySeconds() const override { return steady; }
    /// Time passes, on both clocks; the day stays.
    void Pass(int seconds) {
        steady += seconds;
        const int of = ((now.hour * 60 + now.minute) * 60 + now.second + seconds) % (24 * 60 * 60);
        now.hour = of / 3600, now.minute = of / 60 % 60, now.second = of % 60;
    }
};

}  // namespace kelvo::test
