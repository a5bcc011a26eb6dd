#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// One option of a command. Its help stands in one place: `--help`, the man page and the completion follow it.
struct Option {
    const char* name;   ///< with its dashes, "--ion"
    const char* value;  ///< what it takes, "NAME"; null for a switch
    const char* help;
    bool repeats = false;  ///< may be given more than once
};

/// The words of a command, taken apart by its table of options. `--name VALUE` and `--name=VALUE` are one; `--` ends
/// the options; a single `-` is a word like any other and means standard input.
class Arguments {
 public:
    /// @throws Failure (Usage) for an option that is not in the table, one without its value or with one too many
    Arguments(std::span<const std::string> words, std::span<const Option> options);

    bool Has(std::string_view option) const { return values_.contains(option); }
    std::optional<std::string> Value(std::string_view option) const;
    std::vector<std::string> Values(std::string_view option) const;
    /// The option as a number. @throws Failure (Usage) when the text is none
    std::optional<double> Number(std::string_view option) const;
    /// Words that are no options.
    const std::vector<std::string>& Words() const { return words_; }

 private:
    std::map<std::string, std::vector<std::string>, std::less<>> values_;
    std::vector<std::string> words_;
};

}  // namespace kelvo
