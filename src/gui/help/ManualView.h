#pragma once

#include <QTextBrowser>

namespace kelvo {

/// Shows the Markdown pages that are built into the program under ":/manual/". A link may name a heading,
/// "manual.md#measuring-samples": the heading's words in small letters, joined by "-".
class ManualView : public QTextBrowser {
    Q_OBJECT
 public:
    explicit ManualView(QWidget* parent = nullptr);
    /// @param page "manual.md", with or without a heading. @return false when there is no such page or heading
    bool Open(const QString& page);

 protected:
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;

 private:
    bool GoToHeading(const QString& anchor);
    void ColourLinks();
};

/// "Conversion / Dilution" -> "conversion-dilution".
QString HeadingAnchor(const QString& heading);

}  // namespace kelvo
