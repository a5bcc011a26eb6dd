#include "help/ReadingView.h"

#include <QtWidgets>

#include "help/PictureInText.h"
#include "kit/Screen.h"

namespace kelvo {
namespace {

constexpr double LongestLine = 84;    ///< of letters as wide as an average one of running text
constexpr double LetterWidth = 1.16;  ///< of the face's own average
constexpr int Margin = 12;
constexpr int PictureObject = QTextFormat::UserObject + 1;
constexpr int PictureProperty = QTextFormat::UserProperty + 1;

struct Look {
    double size;  ///< of the running text's size
    bool bold;
    double above;  ///< in lines
};

Look LookOf(TextBlock::Kind kind) {
    switch (kind) {
        case TextBlock::Kind::Title: return {1.6, true, 0};
        case TextBlock::Kind::Heading: return {1.2, true, 1.1};
        case TextBlock::Kind::Table: return {0.95, false, 0};
        case TextBlock::Kind::Item: return {1, false, 0.25};
        case TextBlock::Kind::Paragraph: break;
    }
    return {1, false, 0.55};
}

}  // namespace

void WriteBlocks(QTextCursor& cursor, const std::vector<TextBlock>& blocks, double points) {
    constexpr double Leading = 125, PixelsAPoint = 96.0 / 72;
    const double line = points * PixelsAPoint * Leading / 100;
    bool first = true;
    const TextBlock* before = nullptr;
    for (const TextBlock& block : blocks) {
        const Look look = LookOf(block.kind);
        const bool afterTable = before != nullptr && before->kind == TextBlock::Kind::Table;
        const bool table = block.kind == TextBlock::Kind::Table;
        QTextBlockFormat place;
        place.setLineHeight(Leading, QTextBlockFormat::ProportionalHeight);
        place.setTopMargin(first ? 0 : (table && !afterTable ? 0.4 : look.above) * line);
        if (block.kind == TextBlock::Kind::Heading) {
            place.setHeadingLevel(2);
            place.setBottomMargin(-0.25 * line);
        }
        if (block.kind == TextBlock::Kind::Title) place.setHeadingLevel(1);
        if (block.kind == TextBlock::Kind::Item) {
            place.setLeftMargin(1.2 * line);
            place.setTextIndent(-0.8 * line);
        }
        QTextCharFormat letters;
        letters.setFontPointSize(points * look.size);
        letters.setFontWeight(look.bold ? QFont::DemiBold : QFont::Normal);
        if (table) {
            letters.setFontFamilies({QStringLiteral("DejaVu Sans Mono"), QStringLiteral("monospace")});
            place.setNonBreakableLines(true);
        }
        if (first) {
            cursor.setBlockFormat(place);
            cursor.setBlockCharFormat(letters);
        } else {
            cursor.insertBlock(place, letters);
        }
        const QString text = ToQt(block.text);
        cursor.insertText(block.kind == TextBlock::Kind::Item ? QStringLiteral("•  ") + text : text, letters);
        first = false;
        before = &block;
    }
}

void WriteIllustration(QTextCursor& cursor, const DisplayList& picture, double width) {
    QTextDocument* document = cursor.document();
    document->documentLayout()->registerHandler(PictureObject, new PictureInText(picture, document));
    QTextCharFormat format;
    format.setObjectType(PictureObject);
    format.setProperty(PictureInText::WidthProperty, width);
    cursor.insertBlock();
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
}

ReadingView::ReadingView(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    setFrameShape(QFrame::NoFrame);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    document()->setDocumentMargin(Margin);
}

void ReadingView::Show(const std::vector<TextBlock>& blocks) {
    blocks_ = blocks;
    clear();
    QTextCursor cursor(document());
    WriteBlocks(cursor, blocks_, font().pointSizeF() * zoom_);
    moveCursor(QTextCursor::Start);
    LimitLines();
}

void ReadingView::SetZoom(double zoom) {
    zoom_ = std::clamp(zoom, 0.7, 3.0);
    Show(blocks_);
}

double ReadingView::Measure() const {
    QFont letters = font();
    letters.setPointSizeF(letters.pointSizeF() * zoom_);
    return QFontMetricsF(letters).averageCharWidth() * LetterWidth * LongestLine;
}

int ReadingView::WidestUseful() const {
    return qRound(Measure()) + 2 * Margin + verticalScrollBar()->sizeHint().width();
}

void ReadingView::LimitLines() {
    QTextFrameFormat frame = document()->rootFrame()->frameFormat();
    const double right = std::max<double>(Margin, viewport()->width() - Measure() - Margin);
    if (qFuzzyCompare(frame.rightMargin(), right)) return;
    frame.setMargin(Margin);
    frame.setRightMargin(right);
    document()->rootFrame()->setFrameFormat(frame);
}

void ReadingView::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    LimitLines();
}

void ReadingView::wheelEvent(QWheelEvent* event) {
    if ((event->modifiers() & Qt::ControlModifier) == 0) return QTextBrowser::wheelEvent(event);
    if (event->angleDelta().y() != 0) emit ZoomAsked(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}

}  // namespace kelvo
