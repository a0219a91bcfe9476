#include "company/key.h"

#include <sodium.h>

#include <QFile>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <optional>

#include "store/durable_files.h"
#include "store/error.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t kKeyBytes = crypto_secretbox_KEYBYTES;
using Bytes32 = std::array<unsigned char, kKeyBytes>;

const QString kVersion = u"版"_s, kId = u"鍵"_s, kByPassword = u"パスワード"_s, kByCode = u"復旧キー"_s,
              kSalt = u"塩"_s, kSealed = u"封"_s;

/// The own keys that this process was told the secrets of, by their marks.
QHash<QByteArray, store::Key>& known() {
    static QHash<QByteArray, store::Key> keys;
    return keys;
}

const unsigned char* data(const QByteArray& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}
unsigned char* data(QByteArray& bytes) {
    return reinterpret_cast<unsigned char*>(bytes.data());
}
auto size(const QByteArray& bytes) {
    return static_cast<unsigned long long>(bytes.size());
}

QByteArray randomBytes(qsizetype count) {
    QByteArray bytes(count, Qt::Uninitialized);
    randombytes_buf(bytes.data(), static_cast<std::size_t>(count));
    return bytes;
}

/// By what a key is told from another; it gives nothing of the key away.
QByteArray markOf(const Bytes32& key) {
    QByteArray mark(crypto_generichash_BYTES_MIN, Qt::Uninitialized);
    crypto_generichash(data(mark), static_cast<std::size_t>(mark.size()), key.data(), key.size(), nullptr, 0);
    return mark.toHex();
}

store::Key engineKey(const Bytes32& key) {
    return store::Key::raw(QByteArray(reinterpret_cast<const char*>(key.data()), qsizetype(key.size())));
}

// ---- The seal

/// Letters and digits that are not taken for each other.
constexpr char16_t kCodeLetters[] = u"0123456789ABCDEFGHJKMNPQRSTVWXYZ";
constexpr int kCodeGroups = 5, kCodeGroup = 5;

QString newRecoveryCode() {
    QString code;
    for (int i = 0; i < kCodeGroups * kCodeGroup; ++i) {
        if (i > 0 && i % kCodeGroup == 0) code += u'-';
        code += kCodeLetters[randombytes_uniform(32)];
    }
    return code;
}

/// As it was printed, however it is typed: wide or narrow, with and without strokes, O for 0. Empty when it
/// is no recovery code.
QString recoveryCodeIn(const QString& typed) {
    QString code;
    for (QChar c : typed.normalized(QString::NormalizationForm_KC).toUpper()) {
        if (c == u'O') c = u'0';
        if (c == u'I' || c == u'L') c = u'1';
        if (QStringView(kCodeLetters).contains(c))
            code += c;
        else if (!c.isSpace() && c.category() != QChar::Punctuation_Dash && c != QChar(0x2212))
            return {};
    }
    return code.size() == qsizetype(kCodeGroups) * kCodeGroup ? code : QString();
}

Bytes32 sealKey(QByteArray secret, const QByteArray& salt) {
    Bytes32 key{};
    const int failed = crypto_pwhash(key.data(), key.size(), secret.constData(), size(secret), data(salt),
                                     kPasswordPasses, kPasswordMemory, crypto_pwhash_ALG_ARGON2ID13);
    sodium_memzero(secret.data(), static_cast<std::size_t>(secret.size()));
    if (failed) throw store::Error(store::Error::Reason::Engine, u"メモリが不足しています。"_s);
    return key;
}

QJsonObject seal(const Bytes32& key, const QByteArray& secret) {
    const QByteArray salt = randomBytes(crypto_pwhash_SALTBYTES);
    QByteArray sealed = randomBytes(crypto_secretbox_NONCEBYTES);
    sealed.resize(qsizetype(crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES + kKeyBytes));
    Bytes32 around = sealKey(secret, salt);
    crypto_secretbox_easy(data(sealed) + crypto_secretbox_NONCEBYTES, key.data(), key.size(), data(sealed),
                          around.data());
    sodium_memzero(around.data(), around.size());
    return {{kSalt, QString::fromLatin1(salt.toBase64())}, {kSealed, QString::fromLatin1(sealed.toBase64())}};
}

std::optional<Bytes32> unseal(const QJsonObject& from, const QByteArray& secret) {
    const QByteArray salt = QByteArray::fromBase64(from[kSalt].toString().toLatin1());
    const QByteArray sealed = QByteArray::fromBase64(from[kSealed].toString().toLatin1());
    if (salt.size() != qsizetype(crypto_pwhash_SALTBYTES) ||
        sealed.size() != qsizetype(crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES + kKeyBytes))
        return std::nullopt;
    Bytes32 key{}, around = sealKey(secret, salt);
    const int failed =
        crypto_secretbox_open_easy(key.data(), data(sealed) + crypto_secretbox_NONCEBYTES,
                                   crypto_secretbox_MACBYTES + kKeyBytes, data(sealed), around.data());
    sodium_memzero(around.data(), around.size());
    if (failed) return std::nullopt;
    return key;
}

// ---- The key's file

QJsonObject readKeyFile(const QString& folder) {
    constexpr qint64 kMost = 64 * 1024;  // whoever wrote it
    QFile file(folder + u'/' + kKeyFile);
    QJsonObject told;
    if (file.open(QIODevice::ReadOnly) && file.size() <= kMost)
        told = QJsonDocument::fromJson(file.readAll()).object();
    if (told[kVersion].toInt() != 1 || told[kId].toString().isEmpty())
        throw store::Error(
            store::Error::Reason::Damaged,
            u"「%1」が壊れているため、ファイルを開けません。バックアップから元に戻してください。"_s.arg(
                kKeyFile));
    return told;
}

QByteArray markIn(const QString& folder) {
    return readKeyFile(folder)[kId].toString().toLatin1();
}

/// At any moment the former file stands or the new one.
void writeKeyFile(const QString& folder, const QByteArray& text) {
    const QString path = folder + u'/' + kKeyFile, aside = path + u".new"_s;
    QFile file(aside);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        throw store::Error(store::Error::Reason::ReadOnly, u"「%1」に書き込めません。"_s.arg(kKeyFile));
    file.close();
    store::syncFile(aside);
    store::replaceFile(aside, path);
    store::syncFolder(folder);
}

std::optional<Bytes32> unsealAny(const QJsonObject& file, const QString& secret) {
    if (auto key = unseal(file[kByPassword].toObject(), passwordBytes(secret))) return key;
    const QString code = recoveryCodeIn(secret);
    if (code.isEmpty()) return std::nullopt;
    return unseal(file[kByCode].toObject(), code.toLatin1());
}

}  // namespace

store::Key sharedKey() {
    return store::Key(QStringLiteral("suzumeiro"));
}

void requireSodium() {
    if (sodium_init() < 0)
        throw store::Error(store::Error::Reason::Engine, u"パスワードの部品を使えません。"_s);
}

QByteArray passwordBytes(const QString& password) {
    return password.normalized(QString::NormalizationForm_C).toUtf8();
}

bool filesLocked(const QString& folder) {
    return QFile::exists(folder + u'/' + kKeyFile);
}

bool keyKnown(const QString& folder) {
    return !filesLocked(folder) || known().contains(markIn(folder));
}

store::Key keyOf(const QString& folder) {
    if (!filesLocked(folder)) return sharedKey();
    const auto key = known().constFind(markIn(folder));
    if (key == known().constEnd())
        throw store::Error(store::Error::Reason::NotOpen,
                           u"ファイルが暗号化されています。開くにはパスワードが必要です。"_s);
    return *key;
}

bool learnKey(const QString& folder, const QString& secret) {
    requireSodium();
    const QJsonObject file = readKeyFile(folder);
    const std::optional<Bytes32> key = unsealAny(file, secret);
    // A seal under another key's mark was not made by this program.
    if (!key || markOf(*key) != file[kId].toString().toLatin1()) return false;
    known().insert(markOf(*key), engineKey(*key));
    return true;
}

void forgetKeys(const QString& exceptOf) {
    const QByteArray kept = filesLocked(exceptOf) ? markIn(exceptOf) : QByteArray();
    known().removeIf([&](const auto& entry) { return entry.key() != kept; });
}

OwnKey::OwnKey(const QString& password) : key_(store::Key::none()) {
    requireSodium();
    Bytes32 key{};
    randombytes_buf(key.data(), key.size());
    key_ = engineKey(key);
    recoveryCode_ = newRecoveryCode();
    const QJsonObject told{{kVersion, 1},
                           {kId, QString::fromLatin1(markOf(key))},
                           {kByPassword, seal(key, passwordBytes(password))},
                           {kByCode, seal(key, recoveryCodeIn(recoveryCode_).toLatin1())}};
    file_ = QJsonDocument(told).toJson();
    sodium_memzero(key.data(), key.size());
}

void OwnKey::write(const QString& folder) const {
    writeKeyFile(folder, file_);
    known().insert(markIn(folder), key_);
}

void changeKeyPassword(const QString& folder, const QString& password) {
    requireSodium();
    QJsonObject told = readKeyFile(folder);
    const QByteArray bytes = keyOf(folder).rawBytes();
    Bytes32 key{};
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(key.data()));
    told[kByPassword] = seal(key, passwordBytes(password));
    sodium_memzero(key.data(), key.size());
    writeKeyFile(folder, QJsonDocument(told).toJson());
}

}  // namespace company
