#pragma once
#include <zlib.h>

#include <QByteArray>
#include <QFile>
#include <algorithm>

namespace support {

/// A packed file out of the tests' data; empty when there is none.
inline QByteArray unpacked(const QByteArray& name) {
    QByteArray bytes(2 << 20, '\0');
    gzFile file = gzopen(MINT_TEST_DATA "/" + name + ".gz", "rb");
    if (!file) return {};
    bytes.resize(std::max(0, gzread(file, bytes.data(), unsigned(bytes.size()))));
    gzclose(file);
    return bytes;
}
/// A database of the former form.
inline QByteArray formerDatabase() {
    return unpacked("kihon_like.mdb");
}
inline bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

}  // namespace support
