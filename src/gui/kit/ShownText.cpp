#include "kit/ShownText.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QTextDocumentFragment>

#include "kit/PictureView.h"

namespace kelvo {
namespace {

using Relations = QList<QPair<QAccessibleInterface*, QAccessible::Relation>>;

/// A label as a screen reader meets it. Readers take the value of a text that cannot be edited from its text interface.
class SpokenLabel : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
    explicit SpokenLabel(QLabel* label) : QAccessibleWidget(label, QAccessible::StaticText) {}

    QString text(QAccessible::Text what) const override {
        const bool named = !Label().accessibleName().isEmpty();
        if (what == QAccessible::Value) return named ? Shown() : QString();
        if (what != QAccessible::Name || named) return QAccessibleWidget::text(what);
        QString name = Shown();
        return Label().buddy() == nullptr ? name : name.remove(QLatin1Char('&'));
    }
    Relations relations(QAccessible::Relation match) const override {
        Relations all = QAccessibleWidget::relations(match);
        if ((match & QAccessible::Labelled) != 0 && Label().buddy() != nullptr)
            all.append({QAccessible::queryAccessibleInterface(Label().buddy()), QAccessible::Labelled});
        return all;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type != QAccessible::TextInterface || text(QAccessible::Value).isEmpty())
            return QAccessibleWidget::interface_cast(type);
        return static_cast<QAccessibleTextInterface*>(this);
    }

    int characterCount() const override { return static_cast<int>(Shown().size()); }
    QString text(int from, int to) const override { return Shown().mid(from, to < 0 ? -1 : to - from); }
    QRect characterRect(int) const override { return rect(); }
    // There is no cursor and nothing is selected.
    void selection(int, int* from, int* to) const override { *from = *to = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    int offsetAtPoint(const QPoint&) const override { return 0; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int* from, int* to) const override {
        *from = 0;
        *to = characterCount();
        return {};
    }

 private:
    const QLabel& Label() const { return *static_cast<const QLabel*>(object()); }
    QString Shown() const {
        const QString text = Label().text();
        return Label().textFormat() == Qt::RichText ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    }
};

class SpokenPicture : public QAccessibleWidget {
 public:
    explicit SpokenPicture(PictureView* view) : QAccessibleWidget(view, QAccessible::Graphic) {}

    QString text(QAccessible::Text what) const override {
        if (what == QAccessible::Description) return static_cast<const PictureView*>(object())->Description();
        return QAccessibleWidget::text(what);
    }
};

/// Qt asks for each class that an object is of, the narrowest first.
QAccessibleInterface* SpokenFor(const QString& className, QObject* object) {
    if (className == QLatin1String(QLabel::staticMetaObject.className()))
        return new SpokenLabel(static_cast<QLabel*>(object));
    if (className == QLatin1String(PictureView::staticMetaObject.className()))
        return new SpokenPicture(static_cast<PictureView*>(object));
    return nullptr;
}

/// A label that leaves open whether its text is markup gets its answer before it is measured or shown.
class PlainLabels : public QObject {
 public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Polish) return false;
        auto* label = qobject_cast<QLabel*>(watched);
        if (label != nullptr && label->textFormat() == Qt::AutoText) label->setTextFormat(Qt::PlainText);
        return false;
    }
};

}  // namespace

void KeepLabelsPlainAndSpoken(QApplication& app) {
    app.installEventFilter(new PlainLabels(&app));
    QAccessible::installFactory(SpokenFor);
}

}  // namespace kelvo
