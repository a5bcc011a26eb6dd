#include "devices/QtDialogs.h"

#include <QtWidgets>
#include <utility>

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

std::optional<std::string> Run(const FileRequest& request, QFileDialog::AcceptMode mode) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("CMDialog1"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setAcceptMode(mode);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDirectory(Text(request.directory));
    // The filter's text names its pattern in brackets, which is the form Qt reads; it matches whatever the case.
    const QString filter = Text(request.filter).section(QLatin1Char('|'), 0, 0);
    dialog.setNameFilters({filter, QStringLiteral("All files (*)")});
    if (!request.initialName.empty() && request.initialName.find('*') == std::string::npos)
        dialog.selectFile(Text(request.initialName));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QStringList names = dialog.selectedFiles();
    return names.isEmpty() ? std::string() : names.front().toStdString();
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

std::optional<std::string> QtFileChooser::Open(const FileRequest& request) {
    if (next_) return std::exchange(next_, std::nullopt);
    return Run(request, QFileDialog::AcceptOpen);
}

std::optional<std::string> QtFileChooser::Save(const FileRequest& request) {
    return Run(request, QFileDialog::AcceptSave);
}

}  // namespace kelvo
