// The least window that the toolkit can show: what the start of the program is measured against (start.sh).
#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
    const QApplication app(argc, argv);
    QLabel label(QStringLiteral("Kelvo"));
    label.resize(600, 400);
    label.show();
    return QApplication::exec();
}
