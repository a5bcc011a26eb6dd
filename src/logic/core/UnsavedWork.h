#pragma once

#include <functional>
#include <list>
#include <string>
#include <vector>

namespace kelvo {

/// A file's worth of work that would be lost if the program ended now.
struct UnsavedPiece {
    std::string what;        ///< in the analyst's words: "the samples of the table"
    std::string extension;   ///< of the file it is kept in, with its dot: ".TAB"
    std::string bytes;       ///< the whole content, in the form in which the program opens that kind of file
    std::string file;        ///< the file that the analyst has chosen for it, tried first; empty: none
    std::string facts = {};  ///< of a table: what goes into the file beside it; empty: there is none
};

/// Who holds unsaved work says so here, and is asked when the program ends by a failure, by a signal or by the log-out
/// of the session: a screen with filled boxes, a note pad, the journal of a recording. `AppContext::unsaved` is the one
/// list; a screen keeps the registration as a member, so that it is asked as long as it lives:
///
///     registration_ = context.unsaved.Add([this]() -> std::vector<UnsavedPiece> {
///         if (!form_.Changed()) return {};
///         return {{"the boxes of the standard addition", ".STD", form_.Bytes(), {}}};
///     });
///
/// A source is called between two events, never twice at once, shows nothing and changes nothing: the session may go
/// on afterwards. It may be called while a question of its own screen stands.
class UnsavedWork {
 public:
    using Source = std::function<std::vector<UnsavedPiece>()>;

    /// Takes its source off the list when it goes.
    class Registration {
     public:
        Registration() = default;
        Registration(Registration&& other) noexcept { *this = std::move(other); }
        Registration& operator=(Registration&& other) noexcept;
        ~Registration() { Release(); }

     private:
        friend class UnsavedWork;
        void Release();
        UnsavedWork* list_ = nullptr;
        std::list<Source>::iterator at_;
    };

    UnsavedWork() = default;
    UnsavedWork(const UnsavedWork&) = delete;
    UnsavedWork& operator=(const UnsavedWork&) = delete;

    /// The list must outlive the registration.
    [[nodiscard]] Registration Add(Source source);
    /// What all sources hold now, in the order in which they were added. A source that fails gives nothing, and takes
    /// nothing from the others.
    std::vector<UnsavedPiece> Collect() const;

 private:
    std::list<Source> sources_;
};

}  // namespace kelvo
