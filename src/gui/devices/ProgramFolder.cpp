#include "devices/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kelvo {
namespace {

QString UserFolder() {
    const QString home = qEnvironmentVariable("XDG_DATA_HOME");
    const QString base = QDir::isAbsolutePath(home) ? home : QDir::homePath() + QStringLiteral("/.local/share");
    return base + QStringLiteral("/kelvo");
}

void CopyFirstFiles(const QString& from, const QString& to) {
    const QFileInfoList files = QDir(from).entryInfoList(QDir::Files);
    for (const QFileInfo& file : files) {
        const QString target = to + QLatin1Char('/') + file.fileName();
        if (QFile::exists(target) || !QFile::copy(file.filePath(), target)) continue;
        QFile::setPermissions(target, QFile::permissions(target) | QFileDevice::WriteOwner);
    }
}

}  // namespace

std::string UserDataFolder() {
    return UserFolder().toStdString() + "/";
}

std::string ProgramFolder(const std::string& programDir) {
    const QString own = QString::fromStdString(programDir);
    const QFileInfo settings(own + QStringLiteral("/KELVO.ini"));
    if (settings.isFile() && settings.isWritable() && QFileInfo(own).isWritable())
        return QDir(own).absolutePath().toStdString() + "/";
    const QString user = UserFolder();
    QDir().mkpath(user);
    CopyFirstFiles(QDir::cleanPath(own + QStringLiteral("/../share/kelvo")), user);
    CopyFirstFiles(QStringLiteral("/usr/share/kelvo"), user);
    return user.toStdString() + "/";
}

}  // namespace kelvo
