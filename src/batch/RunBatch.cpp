#include "batch/RunBatch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <exception>
#include <new>
#include <string_view>

#include "batch/Commands.h"
#include "batch/Failure.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr std::array<std::string_view, 2> HelpWords = {"--help", "-h"};
constexpr const char* Version = "kelvo-batch " KELVO_VERSION "\n";

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string Usage(const Command& command) {
    const std::string words = command.words;
    return std::string("kelvo-batch ") + command.name + (words.empty() ? "" : " ") + words + " [options]";
}

void WriteExitCodes(std::ostream& out) {
    out << "\nExit codes:\n";
    for (const ExitCodeRow& row : ExitCodes())
        out << "  " << static_cast<int>(row.code) << "  " << row.meaning << '\n';
}

void WriteHelp(std::ostream& out) {
    out << "kelvo-batch: files and sums of Kelvo without its screens\n\n"
           "  kelvo-batch COMMAND ...\n\n"
           "Commands:\n";
    for (const Command& command : Commands())
        out << "  " << Padded(command.name, 10) << command.summary << '\n';
    out << "\n  kelvo-batch COMMAND --help  tells its options\n"
           "  kelvo-batch --version       tells the version\n\n"
           "-h and -V are short for the two.\n";
    WriteExitCodes(out);
}

void WriteHelp(std::ostream& out, const Command& command) {
    out << Usage(command) << ": " << command.summary << "\n\n" << command.more << "\nOptions:\n";
    const auto words = [](const Option& option) {
        return std::string(option.name) + (option.value != nullptr ? std::string(" ") + option.value : std::string());
    };
    std::size_t width = std::string_view("-h, --help").size();
    for (const Option& option : command.options)
        width = std::max(width, words(option).size());
    for (const Option& option : command.options)
        out << "  " << Padded(words(option), width + 2) << option.help
            << (option.repeats ? "; may be given more than once" : "") << '\n';
    out << "  " << Padded("-h, --help", width + 2) << "show this page\n";
    WriteExitCodes(out);
}

const Command* CommandNamed(std::string_view name) {
    const auto all = Commands();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Command& each) { return name == each.name; });
    return found == all.end() ? nullptr : &*found;
}

ExitCode RunCommand(const Command& command, std::span<const std::string> words, const Streams& streams) {
    const auto end = std::find(words.begin(), words.end(), "--");
    if (std::find_first_of(words.begin(), end, HelpWords.begin(), HelpWords.end()) != end) {
        WriteHelp(streams.out, command);
        return ExitCode::Done;
    }
    const Arguments arguments(words, command.options);
    const std::size_t count = arguments.Words().size();
    if (count < command.fewest) Refuse(ExitCode::Usage, "usage: " + Usage(command));
    if (count > command.most) Refuse(ExitCode::Usage, "'" + arguments.Words()[command.most] + "' is one word too many");
    return command.run(arguments, streams);
}

ExitCode Run(std::span<const std::string> words, const Streams& streams) {
    if (words.empty()) Refuse(ExitCode::Usage, "which command?");
    const std::string& name = words.front();
    if (name == "help" || std::find(HelpWords.begin(), HelpWords.end(), name) != HelpWords.end()) {
        WriteHelp(streams.out);
        return ExitCode::Done;
    }
    if (name == "--version" || name == "-V") {
        streams.out << Version;
        return ExitCode::Done;
    }
    const Command* command = CommandNamed(name);
    if (command == nullptr) Refuse(ExitCode::Usage, "there is no command '" + name + "'");
    return RunCommand(*command, words.subspan(1), streams);
}

/// Where the way out of a wrong command line is told.
std::string HelpFor(std::span<const std::string> words) {
    const bool known = !words.empty() && CommandNamed(words.front()) != nullptr;
    return "kelvo-batch " + (known ? words.front() + " " : std::string()) + "--help tells more\n";
}

}  // namespace

int RunBatch(std::span<const std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err) {
    const Streams streams{in, out, err};
    ExitCode code = ExitCode::NoResult;
    errno = 0;  // what it holds in the end is why the output failed
    try {
        code = Run(arguments, streams);
    } catch (const Failure& failure) {
        streams.Note(failure.text);
        if (failure.code == ExitCode::Usage) err << HelpFor(arguments);
        code = failure.code;
    } catch (const RuntimeError& error) {
        streams.Note(error.what());
    } catch (const std::bad_alloc&) {
        streams.Note(ErrorText(ErrorNumber::OutOfMemory));
        code = ExitCode::File;
    } catch (const std::exception& error) {
        streams.Note(error.what());
    }
    out.flush();
    if (!out) {
        const int cause = errno;
        if (cause != EPIPE) {
            std::string text = "the output could not be written";
            if (cause != 0) text += std::string(": ") + std::strerror(cause);
            streams.Note(text);
        }
        return static_cast<int>(ExitCode::File);
    }
    return static_cast<int>(code);
}

}  // namespace kelvo
