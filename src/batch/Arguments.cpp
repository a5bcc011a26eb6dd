#include "batch/Arguments.h"

#include <algorithm>

#include "batch/Failure.h"
#include "batch/Rows.h"

namespace kelvo {

Arguments::Arguments(std::span<const std::string> words, std::span<const Option> options) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--") {
            words_.insert(words_.end(), words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
            return;
        }
        if (!word.starts_with('-') || word == "-") {
            words_.push_back(word);
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const auto option =
            std::find_if(options.begin(), options.end(), [&](const Option& each) { return name == each.name; });
        if (option == options.end()) Refuse(ExitCode::Usage, "there is no option " + name);
        const bool given = equals != std::string::npos;
        if (option->value == nullptr && given) Refuse(ExitCode::Usage, name + " takes no value");
        if (option->value != nullptr && !given && i + 1 == words.size())
            Refuse(ExitCode::Usage, name + " lacks its " + option->value);
        auto& values = values_[name];
        if (!values.empty() && !option->repeats) Refuse(ExitCode::Usage, name + " is given twice");
        if (option->value == nullptr)
            values.emplace_back();
        else
            values.push_back(given ? word.substr(equals + 1) : words[++i]);
    }
}

std::optional<std::string> Arguments::Value(std::string_view option) const {
    const auto found = values_.find(option);
    return found == values_.end() ? std::nullopt : std::optional(found->second.front());
}

std::vector<std::string> Arguments::Values(std::string_view option) const {
    const auto found = values_.find(option);
    return found == values_.end() ? std::vector<std::string>() : found->second;
}

std::optional<double> Arguments::Number(std::string_view option) const {
    const auto text = Value(option);
    if (!text) return std::nullopt;
    const auto number = NumberOf(*text);
    if (!number) Refuse(ExitCode::Usage, std::string(option) + ": " + WhyNoNumber(*text));
    return number;
}

}  // namespace kelvo
