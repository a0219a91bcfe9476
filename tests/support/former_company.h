#pragma once
#include <zlib.h>

#include <QByteArray>
#include <QFile>
#include <algorithm>

namespace support {

/// A database of the former form, out of the tests' data.
inline QByteArray formerDatabase() {
    QByteArray bytes(2 << 20, '\0');
    gzFile file = gzopen(MINT_TEST_DATA "/kihon_like.mdb.gz", "rb");
    bytes.resize(std::max(0, gzread(file, bytes.data(), unsigned(bytes.size()))));
    gzclose(file);
    return bytes;
}
inline bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

}  // namespace support
