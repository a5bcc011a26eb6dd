#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// Sample numbers to be gone through, one row of the table each. A sample with replicates stands as often as it is to
/// be measured; control samples stand at their places among the others.
class SampleList {
 public:
    static constexpr std::size_t MostRows = 100'000, LongestName = 64;
    static constexpr int MostReplicates = 99;

    /// Of a text with a sample a line, or CSV (comma, semicolon or TAB) with the number of replicates in the second
    /// column. A first line that names the columns, empty lines and blanks around a name do not count. UTF-8 or
    /// Windows-1252. @return which line is none, and why; empty when the list has been taken. Else it is as before
    std::string Take(std::string_view bytes);

    bool Empty() const { return names_.empty(); }
    bool Done() const { return next_ >= names_.size(); }
    /// The sample of the next row; empty when there is none.
    std::string Next() const { return Done() ? std::string() : names_[next_]; }
    void Taken() {
        if (!Done()) ++next_;
    }
    /// The row that was taken last has gone again.
    void Back() {
        if (next_ > 0) --next_;
    }
    /// The next sample is passed over with all that is left of its replicates.
    void Skip();
    /// "Next sample: A7 (2 of 3); 14 rows left", or that the list is done; empty without a list.
    std::string Line() const;
    /// What is left, a line a sample: "A7 (2 of 3)", "A8".
    std::vector<std::string> Left() const;

 private:
    std::string PlaceOf(std::size_t at) const;

    std::vector<std::string> names_;
    std::size_t next_ = 0;
};

}  // namespace kelvo
