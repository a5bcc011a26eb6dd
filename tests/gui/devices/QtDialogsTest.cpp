#include "devices/QtDialogs.h"

#include <gtest/gtest.h>

#include <QtWidgets>

#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

TEST(QtFileChooser, OpensWhereTheAnalystWorksAndNotInAHiddenFolder) {
    const QByteArray before = qgetenv("HOME");
    const ScratchFolder home;
    qputenv("HOME", QByteArray::fromStdString(home.Path()));
    const std::string hidden = home / ".local/share/kelvo/", open = home / "open/", iseFilter = "All Data(*.ISE)|*.ISE";
    std::filesystem::create_directories(hidden);
    std::filesystem::create_directories(open);
    QtFileChooser chooser;
    /// The folder that the dialog opens at; it is left with a file of that folder, or by Escape.
    const auto opensAt = [&](bool save, const std::string& folder, const std::string& leaveFor = {}) {
        QString at;
        QTimer::singleShot(0, &*qApp, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            at = dialog->directory().absolutePath() + u'/';
            if (leaveFor.empty()) return dialog->reject();
            dialog->selectFile(QString::fromStdString(leaveFor + "new.ise"));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        const FileRequest request{iseFilter, folder, {}};
        const auto chosen = save ? chooser.Save(request) : chooser.Open(request);
        EXPECT_EQ(chosen.value_or(""), leaveFor.empty() ? "" : leaveFor + "new.ise");
        return at.toStdString();
    };
    EXPECT_EQ(opensAt(true, hidden), home.Path()) << "there is no folder for documents";
    std::filesystem::create_directories(home / "Documents");
    EXPECT_EQ(opensAt(true, hidden), home / "Documents/");
    EXPECT_EQ(opensAt(false, hidden), home / "Documents/");
    std::ofstream(hidden + "old.ise") << "1";
    EXPECT_EQ(opensAt(false, hidden), hidden) << "what has been saved there before is found";
    EXPECT_EQ(opensAt(true, open, open), open) << "a folder that is not hidden is taken as it is";
    EXPECT_EQ(opensAt(false, hidden), open) << "where a file was chosen last";
    qputenv("HOME", before);
}

}  // namespace
}  // namespace kelvo::test
