#include "help/ManualView.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QScrollBar>
#include <QTextBlock>
#include <utility>
#include <vector>

namespace kelvo {

QString HeadingAnchor(const QString& heading) {
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber()) {
            anchor += c;
        } else if ((c.isSpace() || c == QLatin1Char('-')) && !anchor.isEmpty() && !anchor.endsWith(QLatin1Char('-'))) {
            anchor += QLatin1Char('-');
        }
    }
    while (anchor.endsWith(QLatin1Char('-')))
        anchor.chop(1);
    return anchor;
}

ManualView::ManualView(QWidget* parent) : QTextBrowser(parent) {
    setOpenExternalLinks(true);
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(16);
}

bool ManualView::Open(const QString& page) {
    const QUrl url(QStringLiteral("qrc:/manual/") + page);
    setSource(url, QTextDocument::MarkdownResource);
    return QFile::exists(QLatin1Char(':') + url.path()) && (!url.hasFragment() || GoToHeading(url.fragment()));
}

void ManualView::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
    QTextBrowser::doSetSource(name, type);
    ColourLinks();
    if (name.hasFragment()) GoToHeading(name.fragment());
}

void ManualView::ColourLinks() {
    // A dark theme often leaves links in the dark blue of a light one.
    const bool dark = palette().color(QPalette::Base).lightness() < 128;
    QTextCharFormat colour;
    colour.setForeground(QColor(dark ? QStringLiteral("#8ab8ff") : QStringLiteral("#1f5fa8")));
    std::vector<std::pair<int, int>> links;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (const QTextFragment fragment = part.fragment(); fragment.charFormat().isAnchor())
                links.emplace_back(fragment.position(), fragment.position() + fragment.length());
    QTextCursor cursor(document());
    for (const auto& [from, to] : links) {
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(colour);
    }
}

bool ManualView::GoToHeading(const QString& anchor) {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || HeadingAnchor(block.text()) != HeadingAnchor(anchor)) continue;
        const QRectF place = document()->documentLayout()->blockBoundingRect(block);
        setTextCursor(QTextCursor(block));
        verticalScrollBar()->setValue(qRound(place.top()));
        return true;
    }
    return false;
}

}  // namespace kelvo
