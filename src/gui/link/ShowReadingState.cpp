#include "link/ShowReadingState.h"

#include <QStyle>
#include <QVariant>
#include <QWidget>

#include "kit/Screen.h"
#include "link/LinkStatusLabel.h"

namespace kelvo {

void GreyValues(std::initializer_list<QWidget*> values, bool grey) {
    for (QWidget* value : values) {
        if (value->property("stale").toBool() == grey) continue;
        value->setProperty("stale", grey);
        value->style()->unpolish(value);
        value->style()->polish(value);
    }
}

void ShowReadingState(Screen& screen, std::initializer_list<QWidget*> values, const ReadingState& state) {
    GreyValues(values, !state.IsLive());
    screen.SetReadingNote(ReadingNote(state));
    // The light beside the value must not say something else for the rest of its own half second.
    for (auto* light : screen.findChildren<LinkStatusLabel*>())
        light->Follow();
}

}  // namespace kelvo
