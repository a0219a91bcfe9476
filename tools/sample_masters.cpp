#include "sample_masters.h"

#include "sample_writer.h"

namespace t = schema::tables;

namespace sample {
namespace {

const QDate kSinceFounding(1990, 4, 1);
const QDate kNotYet(2027, 4, 1);  ///< after every run: such an entry may not be chosen yet

void writeCompany(store::Connection& cn, const SampleOptions& options) {
    cn.execute(
        QStringLiteral(
            "UPDATE 会社テーブル SET 会社名 = ?, 郵便番号 = ?, 所在地１ = ?, 所在地２ = ?, tel = ?, "
            "fax = ?, 代表者名 = ?, 自由マスタ1 = ?, 自由マスタ2 = ?, 自由マスタ3 = ?, "
            "自由マスタ4 = ?, 自由マスタ5 = ?"),
        {options.company == QStringLiteral("見本商事") ? QStringLiteral("見本商事株式会社") : options.company,
         u"104-0045", u"東京都中央区築地3-2-10", u"見本ビル5階", u"03-5550-0100", u"03-5550-0101",
         u"見本　太郎", u"職能資格", u"勤務地", u"組合", u"未設定", u"未設定"});
}

void writeCodes(store::Connection& cn, const char16_t* table, const std::vector<lists::Entry>& entries) {
    TableWriter writer(cn, table);
    for (const lists::Entry& entry : entries) writer.write({text(entry.code), text(entry.name)});
}

void writeDatedCodes(store::Connection& cn, const char16_t* table, const std::vector<lists::Entry>& entries) {
    TableWriter writer(cn, table);
    for (const lists::Entry& entry : entries)
        writer.write({text(entry.code), text(entry.name), kSinceFounding});
}

void writeDependentCodes(store::Connection& cn) {
    TableWriter syou(cn, t::所属小マスタ::kName);
    for (const lists::SyozokuSyou& entry : lists::kSyozokuSyou)
        syou.write({text(entry.syozokuDai), text(entry.code), text(entry.name), kSinceFounding});
    TableWriter school(cn, t::最終学歴マスタ::kName);
    for (const lists::Gakureki& entry : lists::kGakureki)
        school.write({text(entry.code), text(entry.name), entry.taiouNenrei});
    TableWriter relation(cn, t::続柄マスタ::kName);
    for (const lists::Zokugara& entry : lists::kZokugara)
        relation.write({text(entry.code), text(entry.name), text(entry.group)});
    TableWriter grade(cn, t::等級マスタ::kName);
    for (int toukyuu = 1; toukyuu <= 20; ++toukyuu)
        grade.write({QString::number(toukyuu), QStringLiteral("%1等級").arg(toukyuu)});
}

/// Entries that come into force later than every transfer of the sample.
void writeFutureCodes(store::Connection& cn) {
    TableWriter(cn, t::社員区分マスタ::kName).write({u"05", u"アルバイト", kNotYet});
    TableWriter(cn, t::所属大マスタ::kName).write({u"07", u"海外事業部", kNotYet});
    TableWriter(cn, t::所属小マスタ::kName).write({u"07", u"71", u"輸出課", kNotYet});
}

}  // namespace

void writeMasters(store::Connection& cn, const SampleOptions& options) {
    writeCompany(cn, options);
    writeDatedCodes(cn, t::社員区分マスタ::kName, lists::kSyainKubun);
    writeDatedCodes(cn, t::所属大マスタ::kName, lists::kSyozokuDai);
    writeDatedCodes(cn, t::役職マスタ::kName, lists::kYakusyoku);
    writeDatedCodes(cn, t::職種マスタ::kName, lists::kSyokusyu);
    writeDatedCodes(cn, t::コースマスタ::kName, lists::kCourse);
    writeCodes(cn, t::異動事由マスタ::kName, lists::kIdouJiyuu);
    writeCodes(cn, t::住宅区分マスタ::kName, lists::kJuutaku);
    writeCodes(cn, t::採用区分マスタ::kName, lists::kSaiyou);
    writeCodes(cn, t::出身地マスタ::kName, lists::kSyussinchi);
    writeCodes(cn, t::自由マスタ1::kName, lists::kJiyuu1);
    writeCodes(cn, t::自由マスタ2::kName, lists::kJiyuu2);
    writeCodes(cn, t::自由マスタ3::kName, lists::kJiyuu3);
    writeCodes(cn, t::資格免許マスタ::kName, lists::kShikaku);
    writeCodes(cn, t::続柄グループマスタ::kName, lists::kZokugaraGroup);
    writeDependentCodes(cn);
    writeFutureCodes(cn);
}

}  // namespace sample
