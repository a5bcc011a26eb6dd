#include "kit/BodyArea.h"

#include <QtWidgets>

namespace kelvo {
namespace {

/// The smallest body that is still of use; what it does not show is scrolled to.
constexpr QSize Smallest(320, 160);

constexpr int Around = 10;  ///< shown around what has the focus

/// What is scrolled. The area asks for a height and scrolls below it, so the answer is what the content needs at least
/// and not what it would like to have.
class Content : public QWidget {
 public:
    int heightForWidth(int width) const override {
        const bool wraps = layout() != nullptr && layout()->hasHeightForWidth();
        return wraps ? layout()->totalMinimumHeightForWidth(width) : QWidget::heightForWidth(width);
    }
};

}  // namespace

BodyArea::BodyArea(QWidget* parent) : QScrollArea(parent) {
    setObjectName(QStringLiteral("body"));
    setWidget(new Content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    // The window's own ground shows through.
    viewport()->setAutoFillBackground(false);
    widget()->setAutoFillBackground(false);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now == nullptr || !widget()->isAncestorOf(now)) return;
        // The whole of it; `ensureWidgetVisible` is content with the cursor.
        const QRect all(now->mapTo(widget(), QPoint(0, 0)), now->size());
        const QPoint centre = all.center();
        ensureVisible(centre.x(), centre.y(), all.width() / 2 + Around, all.height() / 2 + Around);
    });
}

QSize BodyArea::sizeHint() const {
    return widget()->sizeHint();
}

QSize BodyArea::minimumSizeHint() const {
    return widget()->minimumSizeHint().boundedTo(Smallest);
}

bool BodyArea::hasHeightForWidth() const {
    return widget()->hasHeightForWidth();
}

int BodyArea::heightForWidth(int width) const {
    return widget()->hasHeightForWidth() ? widget()->layout()->totalHeightForWidth(width) : -1;
}

QSize BodyArea::Needed(int width) const {
    // A least size that the screen has set counts as well as that of its layout.
    QSize needed = widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
    if (widget()->hasHeightForWidth())
        needed.setHeight(std::max(needed.height(), widget()->heightForWidth(std::max(width, needed.width()))));
    return needed;
}

QSize BodyArea::WindowNeeded() const {
    const QWidget* all = window();
    const int other = all->layout()->totalMinimumSize().height() - minimumSizeHint().height();
    const QSize needed = Needed(width());
    return {std::max(needed.width(), all->layout()->totalMinimumSize().width()), needed.height() + other};
}

void BodyArea::Grow() {
    const QSize before = std::exchange(needed_, Needed(width()));
    const bool more = needed_.width() > before.width() || needed_.height() > before.height();
    if (more && window()->isVisible() && !before.isEmpty()) FitWindow();
}

void BodyArea::FitWindow() {
    QWidget* all = window();
    const QRect room = all->screen()->availableGeometry();
    all->resize(all->size().expandedTo((needed_ + all->size() - size()).boundedTo(room.size())));
    // What has grown past the lower edge of the display moves up.
    const int beyond = all->frameGeometry().bottom() - room.bottom();
    if (beyond > 0) all->move(all->x(), std::max(room.top(), all->y() - beyond));
}

void BodyArea::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    if (needed_.isEmpty()) needed_ = Needed(width());
}

void BodyArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    const QSize now = window()->size();
    const bool sameWindow = std::exchange(window_, now) == now;
    const bool fitted = event->oldSize().height() >= needed_.height() && event->size().height() < needed_.height();
    // Not the analyst but a remark of two lines below it has taken the room.
    if (sameWindow && fitted) QTimer::singleShot(0, this, &BodyArea::FitWindow);
}

bool BodyArea::eventFilter(QObject* watched, QEvent* event) {
    const bool done = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        Grow();
    }
    return done;
}

}  // namespace kelvo
