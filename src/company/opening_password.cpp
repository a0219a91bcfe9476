#include "company/opening_password.h"

#include <sodium.h>

#include <algorithm>
#include <array>

#include "store/work.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

constexpr unsigned long long kPasses = 3;
constexpr std::size_t kMemory = std::size_t(64) << 20;
constexpr int kFreeTries = 3;
constexpr int kFirstWait = 5, kLongestWait = 300;  // seconds

void requireLibrary() {
    if (sodium_init() < 0)
        throw store::Error(store::Error::Reason::Engine, u"パスワードの部品を使えません。"_s);
}

/// The same password however an input method composes it.
QByteArray bytesOf(const QString& password) {
    return password.normalized(QString::NormalizationForm_C).toUtf8();
}

QString hashOf(const QString& password) {
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    QByteArray bytes = bytesOf(password);
    const int failed = crypto_pwhash_str(hash.data(), bytes.constData(),
                                         static_cast<unsigned long long>(bytes.size()), kPasses, kMemory);
    sodium_memzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (failed) throw store::Error(store::Error::Reason::Engine, u"メモリが不足しています。"_s);
    return QString::fromLatin1(hash.data());
}

bool matches(const QString& hash, const QString& password) {
    const QByteArray kept = hash.toLatin1();
    if (kept.size() >= qsizetype(crypto_pwhash_STRBYTES)) return false;
    std::array<char, crypto_pwhash_STRBYTES> whole{};
    std::copy(kept.begin(), kept.end(), whole.begin());
    QByteArray bytes = bytesOf(password);
    const bool right = crypto_pwhash_str_verify(whole.data(), bytes.constData(),
                                                static_cast<unsigned long long>(bytes.size())) == 0;
    sodium_memzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
    return right;
}

int waitAfter(qint64 failures) {
    if (failures < kFreeTries) return 0;
    return int(std::min<qint64>(kFirstWait << std::min<qint64>(failures - kFreeTries, 10), kLongestWait));
}

}  // namespace

bool hasOpeningPassword(store::Connection& cnMain) {
    return cnMain.hasTable(u"S開始パスワード"_s) &&
           !cnMain.query(u"select 1 from S開始パスワード limit 1"_s).isEmpty();
}

void setOpeningPassword(store::Connection& cnMain, const QString& password) {
    requireLibrary();
    const QString hash = hashOf(password);
    removeOpeningPassword(cnMain);
    cnMain.execute(u"insert into S開始パスワード(ハッシュ,失敗回数) values(?,0)"_s, {hash});
}

void removeOpeningPassword(store::Connection& cnMain) {
    cnMain.execute(u"delete from S開始パスワード"_s);
}

PasswordAnswer tryOpeningPassword(store::Connection& cnMain, const QString& password, const QDateTime& now) {
    requireLibrary();
    const store::Recordset row = cnMain.query(u"select ハッシュ,失敗回数,失敗日時 from S開始パスワード"_s);
    if (row.isEmpty()) return {.right = true};
    const qint64 failures = row.value(1).isNull() ? 0 : row.value(1).toInteger();
    const QDateTime last =
        row.value(2).isNull() ? QDateTime() : QDateTime::fromString(row.value(2).toText(), Qt::ISODate);
    if (last.isValid() && failures > 0) {
        // A clock that was set back does not make the wait any longer than it is.
        const qint64 left = waitAfter(failures) - std::max<qint64>(0, last.secsTo(now));
        if (left > 0) return {.wait = int(left)};
    }
    const bool right = !row.value(0).isNull() && matches(row.value(0).toText(), password);
    store::Work work(cnMain);
    if (right)
        cnMain.execute(u"update S開始パスワード set 失敗回数=0, 失敗日時=null"_s);
    else
        cnMain.execute(u"update S開始パスワード set 失敗回数=?, 失敗日時=?"_s,
                       {failures + 1, now.toString(Qt::ISODate)});
    work.commit();
    return {.right = right};
}

}  // namespace company
