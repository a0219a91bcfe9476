#include "schema/files.h"

#include <QDir>
#include <array>

namespace schema {
namespace {

constexpr std::array kFiles{File::Kihon, File::Chingin, File::Hyouka, File::Syouyo};

QString ending(File file) {
    switch (file) {
        case File::Kihon:
            return QStringLiteral("基本db.mdb");
        case File::Chingin:
            return QStringLiteral("賃金db.mdb");
        case File::Hyouka:
            return QStringLiteral("評価db.mdb");
        case File::Syouyo:
            return QStringLiteral("賞与db.mdb");
    }
    return {};
}

}  // namespace

QString fileName(const QString& company, File file) {
    return company + ending(file);
}

QString filePath(const QString& dataDir, const QString& company, File file) {
    return QDir(QDir(dataDir).absoluteFilePath(company)).absoluteFilePath(fileName(company, file));
}

std::optional<File> fileOf(const QString& path) {
    for (const File file : kFiles)
        if (path.endsWith(ending(file))) return file;
    return std::nullopt;
}

}  // namespace schema
