#pragma once

#include <string>
#include <vector>

#include "core/StateOf.h"
#include "help/HelpTopics.h"
#include "help/NotePad.h"
#include "help/TextBlocks.h"

namespace kelvo {

class Prompts;

/// What a sheet can show: a topic in a step, or a document of that file name.
struct HelpPage {
    int topic = -1, step = 0;
    std::string file;
};

/// The help sheet behind its window: which page is shown, its two parts, its note pad.
class HelpSheet {
 public:
    HelpSheet(StateOf<const Paths, Navigation> state, Prompts& prompts)
        : state_(state), paths_(state), navigation_(state), prompts_(prompts) {}

    /// Takes up what "Notes", F1 or "Introduction" left in the state, and takes it out of there. A document that cannot
    /// be read is told in a box and shown empty.
    void Open();
    /// Leaves word of the page shown, for the second sheet.
    void LeavePlace() const;
    /// Opens the page that the first sheet shows, or the present topic when there is none.
    void OpenAgain();
    /// The same as `Open` for a page found by a search.
    void Show(const HelpPage& page);

    /// A document has no pad.
    bool IsDocument() const { return !page_.file.empty(); }
    /// Title of the window: the fixed one for a topic, the document's name otherwise.
    std::string Caption() const;
    /// What stands above the text.
    std::string Heading() const;
    std::vector<TextBlock> First() const;
    std::vector<TextBlock> Second() const;
    bool HasSecond() const { return !IsDocument() && row_->second; }
    HelpPicture Picture() const;
    /// Page of the manual that goes further.
    std::string Chapter() const;
    const NotePad& Pad() const { return pad_; }
    /// What the status bar says about the pad; empty when there is nothing to say.
    std::string Status() const;

    /// Saves the pad before the page is left. A save that fails keeps the page; when it fails once more the analyst may
    /// give the text up. @return whether the page may be left
    bool Leave(const std::string& padText);
    /// Puts the pad away without a question, where the session ends. @return false when the text could not be put away
    bool Keep(const std::string& padText) { return pad_.Keep(padText); }

 private:
    StateOf<const Paths, Navigation> state_;
    const Paths& paths_;
    Navigation& navigation_;
    Prompts& prompts_;
    HelpPage page_;
    const HelpSheetRow* row_ = &FindHelpSheet(-1, 0);
    std::vector<TextBlock> document_;
    NotePad pad_;
    bool failedBefore_ = false;
};

}  // namespace kelvo
