#include "masters/master_kinds.h"

#include "schema/catalog.h"

namespace t = schema::tables;
using R = personnel::Referent;

namespace masters {
namespace {

MasterKind plain(const char* screen, R referent, const char16_t* table) {
    return {.screen = QString::fromLatin1(screen),
            .referent = referent,
            .table = &schema::tableNamed(QString::fromUtf16(table))};
}

MasterKind dated(const char* screen, R referent, const char16_t* table, bool required) {
    MasterKind kind = plain(screen, referent, table);
    kind.date = t::社員区分マスタ::設定年月日;
    kind.required = required;
    return kind;
}

/// A section belongs to a department: its code counts under the department's.
MasterKind section() {
    namespace c = t::所属小マスタ;
    MasterKind kind = plain("frmMastaSyozokuSyo", R::SyozokuSyo, c::kName);
    kind.code = c::Code;
    kind.name = c::所属小;
    kind.date = c::設定年月日;
    kind.other = c::所属大;
    kind.highest = 9999;
    kind.underOther = true;
    return kind;
}

std::vector<MasterKind> build() {
    std::vector<MasterKind> kinds{
        dated("frmMastaSyain", R::SyainKubun, t::社員区分マスタ::kName, true),
        dated("frmMastaSyozokuDai", R::SyozokuDai, t::所属大マスタ::kName, true),
        dated("frmMastaYakusyoku", R::Yakusyoku, t::役職マスタ::kName, true),
        dated("frmMastaSyokusyu", R::Syokusyu, t::職種マスタ::kName, true),
        dated("frmMastaCourse", R::Course, t::コースマスタ::kName, false),
        section(),
        plain("frmMastaIdouJiyuu", R::IdouJiyuu, t::異動事由マスタ::kName),
        plain("frmMastaJyutaku", R::Jyutaku, t::住宅区分マスタ::kName),
        plain("frmMastaGakureki", R::Gakureki, t::最終学歴マスタ::kName),
        plain("frmMastaSaiyou", R::Saiyou, t::採用区分マスタ::kName),
        plain("frmMastaShikaku", R::Shikaku, t::資格免許マスタ::kName),
        plain("frmMastaZokugaraGroup", R::ZokugaraGroup, t::続柄グループマスタ::kName),
        plain("frmMastaZokugara", R::Zokugara, t::続柄マスタ::kName),
        plain("frmMastaSyussinchi", R::Syussinchi, t::出身地マスタ::kName),
    };
    const struct {
        R referent;
        const char16_t* table;
    } free[] = {{R::Jiyuu1, t::自由マスタ1::kName},
                {R::Jiyuu2, t::自由マスタ2::kName},
                {R::Jiyuu3, t::自由マスタ3::kName},
                {R::Jiyuu4, t::自由マスタ4::kName},
                {R::Jiyuu5, t::自由マスタ5::kName}};
    for (const auto& [referent, table] : free) {
        kinds.push_back(plain("frmMastaGiyuu", referent, table));
        kinds.back().attribute = static_cast<int>(referent) - static_cast<int>(R::Jiyuu1) + 1;
        kinds.back().screen += QString::number(kinds.back().attribute);
        kinds.back().help = 3009 + kinds.back().attribute;
    }
    for (MasterKind& kind : kinds) {
        if (kind.referent == R::IdouJiyuu || kind.referent == R::Gakureki) kind.required = true;
        if (kind.referent == R::SyainKubun) kind.help = 3019;
        if (kind.referent == R::Gakureki) kind.age = t::最終学歴マスタ::対応年齢;
        if (kind.referent == R::Zokugara) kind.other = t::続柄マスタ::続柄グループ;
    }
    return kinds;
}

}  // namespace

QString MasterKind::tableName() const {
    return table->name;
}

QString MasterKind::column(int position) const {
    return table->columns[static_cast<std::size_t>(position)].name;
}

const std::vector<MasterKind>& masterKinds() {
    static const std::vector<MasterKind> kinds = build();
    return kinds;
}

std::vector<QString> attributeNames(store::Connection& cn) {
    const auto row = cn.query(QStringLiteral(
        "select 自由マスタ1,自由マスタ2,自由マスタ3,自由マスタ4,自由マスタ5 from 会社テーブル"));
    std::vector<QString> names;
    for (int i = 0; i < row.fieldCount(); ++i)
        names.push_back(row.isEmpty() ? kSwitchedOff : row.value(i).toText());
    return names;
}

QString captionOf(const MasterKind& kind, const std::vector<QString>& attributes) {
    return kind.attribute ? attributes.at(static_cast<std::size_t>(kind.attribute) - 1) : kind.nameColumn();
}

}  // namespace masters
