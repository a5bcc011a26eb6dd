#include "devices/QtDialogs.h"

#include <QtWidgets>
#include <utility>

#include "core/Dialogs.h"

namespace kelvo {
namespace {

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

void Fill(QMessageBox& box, const std::string& text, const std::string& title) {
    box.setTextFormat(Qt::PlainText);
    box.setText(Text(text));
    // Some desktops put the program's name where a title is empty; a blank keeps it empty.
    box.setWindowTitle(title.empty() ? QStringLiteral(" ") : Text(title));
}

bool IsHidden(const QString& folder) {
    return QDir::cleanPath(folder).contains(QStringLiteral("/."));
}

QString Documents() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

/// A question that only its buttons answer.
class ButtonsOnly : public QMessageBox {
 public:
    using QMessageBox::QMessageBox;
    void reject() override {}

 protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
    void keyPressEvent(QKeyEvent* event) override {
        if (!event->matches(QKeySequence::Cancel)) QMessageBox::keyPressEvent(event);
    }
};

}  // namespace

void QtPrompts::Message(const std::string& text, const std::string& title, Icon icon) {
    QMessageBox box(QApplication::activeWindow());
    Fill(box, text, title);
    box.setIcon(icon == Icon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon);
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

bool QtPrompts::Ask(const std::string& text, bool defaultNo, const std::string& title) {
    QMessageBox box(QApplication::activeWindow());
    Fill(box, text, title);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(defaultNo ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

bool QtPrompts::AskToSave(const std::string& text, const std::string& title) {
    ButtonsOnly box(QApplication::activeWindow());
    Fill(box, text, title);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

std::optional<std::string> QtPrompts::Input(const std::string& title, const std::string& prompt,
                                            const std::string& initial) {
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(Text(title));
    dialog.setLabelText(Text(prompt));
    dialog.setTextValue(Text(initial));
    for (QLabel* label : dialog.findChildren<QLabel*>())
        label->setWordWrap(true);
    dialog.resize(440, 160);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue().toStdString();
}

QString QtFileChooser::StartFolder(const FileRequest& request, For what) const {
    QString asked = Text(request.directory);
    if (!IsHidden(asked)) return asked;
    if (!lastFolder_.isEmpty()) return lastFolder_;
    const QString pattern = Text(request.filter).section(QLatin1Char('|'), 1, 1);
    if (what == For::Opening && !QDir(asked).entryList({pattern}, QDir::Files).isEmpty()) return asked;
    return Documents();
}

std::optional<std::string> QtFileChooser::Run(const FileRequest& request, For what) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("CMDialog1"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setAcceptMode(what == For::Opening ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDirectory(StartFolder(request, what));
    // The filter's text names its pattern in brackets, which is the form Qt reads; it matches whatever the case.
    const QString filter = Text(request.filter).section(QLatin1Char('|'), 0, 0);
    dialog.setNameFilters({filter, QStringLiteral("All files (*)")});
    if (!request.initialName.empty() && request.initialName.find('*') == std::string::npos)
        dialog.selectFile(Text(request.initialName));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QStringList names = dialog.selectedFiles();
    if (names.isEmpty()) return std::string();
    lastFolder_ = QFileInfo(names.front()).absolutePath();
    return names.front().toStdString();
}

std::optional<std::string> QtFileChooser::Open(const FileRequest& request) {
    if (next_) return std::exchange(next_, std::nullopt);
    return Run(request, For::Opening);
}

std::optional<std::string> QtFileChooser::Save(const FileRequest& request) {
    return Run(request, For::Saving);
}

}  // namespace kelvo
