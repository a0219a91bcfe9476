#include "reports/package.h"

#include <zlib.h>

#include <QFile>

#include "store/error.h"

namespace reports {

namespace {

constexpr quint32 kEndOfDirectory = 0x06054b50;
constexpr qsizetype kEndOfDirectorySize = 22;
constexpr quint32 kDirectoryEntry = 0x02014b50;
constexpr qsizetype kDirectoryEntrySize = 46;
constexpr qsizetype kPartHeaderSize = 30;
constexpr quint32 kDeflated = 8;

[[noreturn]] void throwBroken() {
    throw store::Error(
        store::Error::Reason::Damaged,
        QStringLiteral(
            "Excel ファイルを最後まで書き込めませんでした。ディスクの空き容量を確認してください。"));
}

QByteArray inflated(const QByteArray& packed, quint32 size) {
    QByteArray content(static_cast<qsizetype>(size), Qt::Uninitialized);
    z_stream stream{};
    // A negative window: the parts of a package are bare deflate streams.
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) throwBroken();
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = size;
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    if (result != Z_STREAM_END || stream.total_out != size) throwBroken();
    return content;
}

/// "</worksheet>" for a document whose outermost element is a worksheet.
QByteArray closingTag(const QByteArray& xml) {
    const qsizetype start = xml.indexOf('<', xml.indexOf("?>")) + 1;
    qsizetype end = start;
    while (end < xml.size() && xml[end] != ' ' && xml[end] != '>') ++end;
    return "</" + xml.mid(start, end - start) + ">";
}

}  // namespace

quint32 Package::number(qsizetype offset, int bytes) const {
    if (offset < 0 || offset + bytes > bytes_.size()) throwBroken();
    quint32 value = 0;
    for (int i = bytes - 1; i >= 0; --i) value = value << 8 | static_cast<uchar>(bytes_[offset + i]);
    return value;
}

Package::Package(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throwBroken();
    bytes_ = file.readAll();
    const qsizetype end = bytes_.size() - kEndOfDirectorySize;
    if (number(end, 4) != kEndOfDirectory) throwBroken();
    qsizetype at = number(end + 16, 4);
    for (quint32 left = number(end + 10, 2); left > 0; --left) {
        if (number(at, 4) != kDirectoryEntry) throwBroken();
        const qsizetype nameSize = number(at + 28, 2);
        const QByteArray name = bytes_.mid(at + kDirectoryEntrySize, nameSize);
        entries_.insert(name, {number(at + 10, 2), number(at + 16, 4), number(at + 20, 4), number(at + 24, 4),
                               number(at + 42, 4)});
        at += kDirectoryEntrySize + nameSize + number(at + 30, 2) + number(at + 32, 2);
    }
}

QByteArray Package::part(const QByteArray& name) const {
    const auto found = entries_.constFind(name);
    if (found == entries_.cend()) throwBroken();
    const qsizetype start =
        found->offset + kPartHeaderSize + number(found->offset + 26, 2) + number(found->offset + 28, 2);
    const QByteArray packed = bytes_.mid(start, found->packedSize);
    const QByteArray content = found->method == kDeflated ? inflated(packed, found->size) : packed;
    const auto checksum =
        crc32(0, reinterpret_cast<const Bytef*>(content.constData()), static_cast<uInt>(content.size()));
    if (content.size() != found->size || checksum != found->checksum) throwBroken();
    return content;
}

void Package::requireWhole() const {
    for (auto entry = entries_.keyBegin(); entry != entries_.keyEnd(); ++entry) {
        const QByteArray xml = part(*entry).trimmed();
        if (!xml.endsWith(closingTag(xml))) throwBroken();
    }
}

}  // namespace reports
