#include "store/durable_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <filesystem>

#include "store/error.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace store {
namespace {

[[noreturn]] void failOn(const QString& path, const QString& what) {
    throw Error(Error::Reason::ReadOnly, what + u'\n' + QDir::toNativeSeparators(path));
}

const QString kNotWritten = QStringLiteral("書き込めません。");
const QString kNotMoved =
    QStringLiteral("名前を変更できません。ほかのプログラムが使用していないか、確かめてください。");

#ifdef Q_OS_WIN
bool flushed(const QString& path, bool) {
    const HANDLE file = CreateFileW(reinterpret_cast<LPCWSTR>(path.utf16()), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool done = FlushFileBuffers(file) != 0;
    CloseHandle(file);
    return done;
}
constexpr int kTries = 30;  // a tenth of a second each
#else
bool flushed(const QString& path, bool folder) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    // Some file systems (of other computers) have no way to sync a folder, and say so.
    const bool done = ::fsync(file) == 0 || (folder && errno == EINVAL);
    ::close(file);
    return done;
}
constexpr int kTries = 1;
#endif

std::filesystem::path native(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

bool renamed(const QString& from, const QString& to) {
    for (int i = 0; i < kTries; ++i) {
        std::error_code error;
        std::filesystem::rename(native(from), native(to), error);
        if (!error) return true;
        if (i + 1 < kTries) QThread::msleep(100);
    }
    return false;
}

}  // namespace

void syncFile(const QString& path) {
    if (!flushed(path, false)) failOn(path, kNotWritten);
}

void syncFolder(const QString& path) {
#ifdef Q_OS_WIN
    Q_UNUSED(path);
#else
    if (!flushed(path, true)) failOn(path, kNotWritten);
#endif
}

void replaceFile(const QString& from, const QString& to) {
    if (!renamed(from, to)) failOn(to, kNotMoved);
}

void renameFolder(const QString& from, const QString& to) {
    const QFileInfo place(to);
    if (place.exists() || place.isSymLink() || !renamed(from, to)) failOn(from, kNotMoved);
}

void copyFile(const QString& from, const QString& to) {
    constexpr qint64 kPart = 1 << 20;
    QFile source(from), target(to);
    if (!source.open(QIODevice::ReadOnly))
        throw Error(Error::Reason::NotOpen,
                    QStringLiteral("ファイルを読めません。\n") + QDir::toNativeSeparators(from));
    if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly)) failOn(to, kNotWritten);
    while (!source.atEnd()) {
        const QByteArray part = source.read(kPart);
        if (source.error() != QFileDevice::NoError) failOn(from, QStringLiteral("ファイルを読めません。"));
        if (target.write(part) != part.size())
            throw Error(Error::Reason::DiskFull,
                        QStringLiteral("ファイルに書き込めません。ディスクの空き容量を確かめてください。\n") +
                            QDir::toNativeSeparators(to));
    }
    if (!target.flush()) failOn(to, kNotWritten);
    target.close();
    syncFile(to);
}

void removeFolder(const QString& path) {
    const QFileInfo place(path);
    if (place.isSymLink() || place.isFile()) {
        if (!QFile::remove(path)) failOn(path, QStringLiteral("削除できません。"));
    } else if (place.exists() && !QDir(path).removeRecursively()) {
        failOn(path, QStringLiteral("削除できません。"));
    }
}

}  // namespace store
