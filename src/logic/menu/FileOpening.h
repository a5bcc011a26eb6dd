#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/ScreenCode.h"
#include "core/StateOf.h"

namespace kelvo {

class FileChooser;
class Prompts;
class ScreenNavigator;

/// Makes the file chooser answer its next request to open a file with this name, without a dialog; none: it asks
/// again.
using AnswerNext = std::function<void(std::optional<std::string>)>;

/// What a screen opens for a file that the program was started with.
enum class OpensAsked { Nothing, OwnFile, Table };

/// A file that the program was started with, opened in the screen that works with its kind: by that screen's own way to
/// open it, so that a faulty file is told there in the usual words.
class FileOpening {
 public:
    using State = StateOf<Navigation, IseCalibration, IonSettings, PhCalibration, StoredWithCalibration, TableState,
                          StatusMessages, const Paths>;
    /// @param open  has the screen open what it is asked for
    FileOpening(State state, Prompts& prompts, FileChooser& files, ScreenNavigator& screens, AnswerNext answerNext,
                std::function<void(ScreenCode, OpensAsked)> open)
        : state_(state),
          prompts_(prompts),
          files_(files),
          screens_(screens),
          answerNext_(std::move(answerNext)),
          open_(std::move(open)) {}

    /// A calibration is taken for the ion it was made with; the ion of the hardware setup stands aside for it.
    /// @return false after a message when there is no such file, or no screen for it: nothing has been shown then
    bool Open(const std::string& file);

 private:
    void UsePhCalibration(const std::string& file);

    State state_;
    Prompts& prompts_;
    FileChooser& files_;
    ScreenNavigator& screens_;
    AnswerNext answerNext_;
    std::function<void(ScreenCode, OpensAsked)> open_;
};

}  // namespace kelvo
