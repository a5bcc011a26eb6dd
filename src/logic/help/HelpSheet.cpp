#include "help/HelpSheet.h"

#include "core/Dialogs.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// Lines 0 to 10 stand on the first sheet; line 11 of the longer lists is a blank between the two.
constexpr std::size_t FirstSheet = 11;

}  // namespace

void HelpSheet::Open() {
    const HelpPage page = {navigation_.HelpTopic,
                           navigation_.HelpStep >= 0 ? navigation_.HelpStep : PresentHelpStep(state_),
                           navigation_.HelpFile};
    navigation_.HelpFile.clear();
    navigation_.HelpStep = -1;
    Show(page);
}

void HelpSheet::LeavePlace() const {
    navigation_.SheetTopic = page_.topic;
    navigation_.SheetStep = page_.step;
}

void HelpSheet::OpenAgain() {
    if (navigation_.SheetTopic < 0) return Open();
    Show({navigation_.SheetTopic, navigation_.SheetStep, {}});
    navigation_.SheetTopic = -1;
}

void HelpSheet::Show(const HelpPage& page) {
    page_ = page;
    row_ = &FindHelpSheet(page.topic, page.step);
    pad_ = NotePad();
    document_.clear();
    failedBefore_ = false;
    if (!IsDocument()) {
        if (row_->note[0] != '\0') pad_ = NotePad(paths_.HelpPath + row_->note);
        return;
    }
    const std::string path = paths_.HelpPath + page_.file;
    TakeFileStep(prompts_, "Opening", path, [&] { document_ = SetOut(ReadHelpText(path)); });
}

std::string HelpSheet::Caption() const {
    return IsDocument() ? Heading() : HelpCaption(page_.topic);
}

std::string HelpSheet::Heading() const {
    if (!IsDocument()) return row_->name;
    const HelpDocument* document = FindHelpDocument(page_.file);
    return document == nullptr ? page_.file : document->name;
}

std::vector<TextBlock> HelpSheet::First() const {
    return IsDocument() ? document_ : SetOut(HelpLines(page_.topic, page_.step), 0, FirstSheet);
}

std::vector<TextBlock> HelpSheet::Second() const {
    if (!HasSecond()) return {};
    const auto& lines = HelpLines(page_.topic, page_.step);
    return SetOut(lines, FirstSheet, lines.size());
}

HelpPicture HelpSheet::Picture() const {
    const HelpDocument* document = FindHelpDocument(page_.file);
    return document == nullptr ? row_->picture : document->picture;
}

std::string HelpSheet::Chapter() const {
    const HelpDocument* document = FindHelpDocument(page_.file);
    return document == nullptr ? row_->chapter : document->chapter;
}

std::string HelpSheet::Status() const {
    if (IsDocument()) return {};
    if (row_->note[0] == '\0') return "No step of the measurement is open, so there is no note to keep here.";
    return pad_.Obstacle();
}

bool HelpSheet::Leave(const std::string& padText) {
    if (pad_.Save(padText, prompts_) == SaveOutcome::Saved) return true;
    if (failedBefore_ &&
        prompts_.Ask("The note has not been saved. Would you like to leave the sheet without it?", true))
        return true;
    failedBefore_ = true;
    return false;
}

}  // namespace kelvo
