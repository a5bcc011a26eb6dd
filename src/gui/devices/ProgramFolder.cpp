#include "devices/ProgramFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "text/Files.h"

namespace kelvo {
namespace {

QString UserFolder() {
    const QString home = qEnvironmentVariable("XDG_DATA_HOME");
    const QString base = QDir::isAbsolutePath(home) ? home : QDir::homePath() + QStringLiteral("/.local/share");
    return base + QStringLiteral("/kelvo");
}

QByteArray BytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool CopyOver(const QString& from, const QString& to) {
    QSaveFile file(to);
    return file.open(QIODevice::WriteOnly) && file.write(BytesOf(from)) >= 0 && file.commit();
}

/// A text that comes with the program is kept once more as it came, so that a newer one can take its place as long as
/// the user has not changed it.
void BringText(const QFileInfo& source, const QString& to) {
    const QString target = to + QLatin1Char('/') + source.fileName();
    const QString asItCame = to + QStringLiteral("/.first/") + source.fileName();
    const bool present = FileExists(target.toStdString());
    const QString found = QString::fromStdString(FindFile(target.toStdString()));
    if (present) {
        const QByteArray now = BytesOf(found);
        if (now == BytesOf(source.filePath()) || now != BytesOf(asItCame)) return;
    }
    if (!QDir().mkpath(to + QStringLiteral("/.first")) || !CopyOver(source.filePath(), found)) return;
    CopyOver(source.filePath(), asItCame);
}

/// Brings what the folder lacks. A file that is there is the user's and stays.
void CopyFirstFiles(const QString& from, const QString& to) {
    const QFileInfoList files = QDir(from).entryInfoList(QDir::Files);
    for (const QFileInfo& file : files) {
        if (file.suffix() == QStringLiteral("TXT")) {
            BringText(file, to);
            continue;
        }
        const QString target = to + QLatin1Char('/') + file.fileName();
        if (FileExists(target.toStdString()) || !QFile::copy(file.filePath(), target)) continue;
        QFile::setPermissions(target, QFile::permissions(target) | QFileDevice::WriteOwner);
    }
}

/// A folder among the temporary files that no other user can have laid out; empty when one has.
std::string OwnTemporaryFolder() {
    // A TMPDIR that has gone gives no path at all.
    const QString temporary = QDir::tempPath();
    const std::string folder =
        (temporary.isEmpty() ? "/tmp" : temporary.toStdString()) + "/kelvo-" + std::to_string(geteuid());
    struct stat status;
    const bool foreign =
        ::lstat(folder.c_str(), &status) == 0 && (!S_ISDIR(status.st_mode) || status.st_uid != geteuid());
    return foreign ? std::string() : folder + "/";
}

}  // namespace

std::string UserDataFolder() {
    return UserFolder().toStdString() + "/";
}

std::string ProgramFolder(const std::string& programDir) {
    const QString own = QString::fromStdString(programDir);
    const QFileInfo settings(QString::fromStdString(FindFile(programDir + "/KELVO.ini")));
    if (settings.isFile() && settings.isWritable() && QFileInfo(own).isWritable())
        return QDir(own).absolutePath().toStdString() + "/";
    const QString user = UserFolder();
    QDir().mkpath(user);
    // The files beside this program are its own; those of another installation are not.
    const QString beside = QDir::cleanPath(own + QStringLiteral("/../share/kelvo"));
    const QString first = QFileInfo::exists(beside) ? beside : QStringLiteral("/usr/share/kelvo");
    CopyFirstFiles(first, user);
    // No home, or one that cannot be written: texts and first settings are still to be read, and what is written
    // says that it cannot be.
    if (!QFileInfo(user).isWritable() && !FileExists(user.toStdString() + "/KELVO.ini") && QFileInfo::exists(first))
        return first.toStdString() + "/";
    return user.toStdString() + "/";
}

std::vector<std::string> KeepFolders(const std::string& programFolder) {
    std::vector<std::string> folders = {programFolder, UserDataFolder(), QDir::homePath().toStdString() + "/"};
    const std::string temporary = OwnTemporaryFolder();
    if (!temporary.empty()) folders.push_back(temporary);
    return folders;
}

}  // namespace kelvo
