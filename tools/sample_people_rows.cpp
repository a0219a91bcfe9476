#include "sample_masters.h"
#include "sample_random.h"
#include "sample_writer.h"

namespace t = schema::tables;

namespace sample {
namespace {

const char16_t* const kNotStated = u"1";
const QDate kToday(2026, 12, 1);  ///< the day up to which the sample's people have lived

store::Binds recordOf(const Person& person, store::Binds row) {
    using namespace t::履歴書テーブル;
    Random random(person.number, Purpose::Address);
    const lists::Place& place = *person.place;
    const bool house = random.chance(45);
    const bool married = wholeYears(person.birth, kToday) >= 30 && random.chance(65);
    row[社員Code] = person.code;
    row[氏名] = person.name;
    row[フリガナ] = person.kana;
    row[性別] = person.female ? u"3" : u"2";
    row[婚姻区分] = married ? u"2" : u"3";
    row[世帯主区分] = married && person.female ? u"3" : u"2";
    row[生年月日] = person.birth;
    row[入社日] = person.joined;
    row[最終学歴] = text(person.gakureki);
    row[郵便番号] = text(place.yuubin);
    row[住所1] = QString::fromUtf16(place.juusyo) + QString::number(random.between(1, 48));
    if (!house)
        row[住所2] =
            QString::fromUtf16(random.pick(lists::kHouses)) + QString::number(random.between(1, 9) * 100 + 3);
    row[電話番号] = QString::fromUtf16(place.tel) + QString::number(random.between(1000, 9999));
    row[出身地] = text(lists::kSyussinchi[static_cast<std::size_t>(random.chance(60) ? place.prefecture - 1
                                                                                     : random.below(47))]
                           .code);
    row[住宅区分] = house ? u"01" : random.chance(70) ? u"02" : u"03";
    row[採用区分] = text(person.saiyou);
    row[退職フラグ] = person.retired.isValid();
    row[退職日] = person.retired;
    row[自由1] = text(person.jiyuu1);
    row[自由2] = text(person.jiyuu2);
    row[自由3] = text(person.jiyuu3);
    return row;
}

void writeHistory(TableWriter& writer, const Person& person) {
    using namespace t::異動テーブル;
    for (const Position& position : person.history) {
        store::Binds row = writer.blank();
        row[社員Code] = person.code;
        row[異動日] = position.from;
        row[異動事由] = text(position.jiyuu);
        row[社員区分] = text(position.syainKubun);
        row[所属大] = text(position.syozokuDai);
        row[所属小] = text(position.syozokuSyou);
        row[役職] = text(position.yakusyoku);
        row[職種] = text(position.syokusyu);
        row[コース] = text(position.course);
        if (position.toukyuu > 0) {
            row[等級] = QString::number(position.toukyuu);
            row[号俸] = QString::number(1 + (person.number * 7 + position.from.year()) % 30);
        }
        row[コメント] = text(position.comment);
        writer.write(row);
    }
}

struct Member {
    const char16_t* zokugara = nullptr;
    bool female = false;
    QDate birth;
    bool dependent = false;
};

void writeMember(TableWriter& writer, const Person& person, const Member& member, Random& random) {
    using namespace t::家族テーブル;
    const lists::Name& given = random.pick(member.female ? lists::kFemale : lists::kMale);
    store::Binds row = writer.blank();
    row[社員Code] = person.code;
    row[氏名] = person.surname + u'　' + QString::fromUtf16(given.text);
    row[フリガナ] = person.surnameKana + u' ' + QString::fromUtf16(given.kana);
    row[続柄] = text(member.zokugara);
    row[性別] = member.female ? u"3" : u"2";
    row[生年月日] = member.birth;
    row[扶養] = member.dependent ? u"2" : u"3";
    row[同居] = random.chance(90) ? u"2" : u"3";
    row[障害] = random.chance(4) ? u"2" : u"3";
    writer.write(row);
}

/// A spouse and up to three children, each 続柄 once; some look after a parent.
void writeFamily(TableWriter& writer, const Person& person) {
    Random random(person.number, Purpose::Family);
    const int age = wholeYears(person.birth, kToday);
    if (age < 28 || random.chance(30)) return;
    const char16_t* const spouse = person.female ? u"01" : u"02";
    writeMember(writer, person,
                {spouse, !person.female, person.birth.addDays(random.between(-1800, 1800)), !person.female},
                random);
    const QDate firstBirth = person.birth.addYears(random.between(26, 32)).addDays(random.below(300));
    const char16_t* const children[] = {u"03", u"04", u"05"};
    for (int child = 0; child < random.below(4); ++child) {
        const QDate birth = firstBirth.addDays(child * 820);
        if (birth >= kToday) break;
        writeMember(writer, person,
                    {children[child], children[child][1] == u'4', birth, wholeYears(birth, kToday) < 22},
                    random);
    }
    if (age >= 45 && random.chance(20))
        writeMember(writer, person, {u"08", true, person.birth.addYears(-27).addDays(77), true}, random);
}

void writeShikaku(TableWriter& writer, const Person& person) {
    using namespace t::資格免許テーブル;
    Random random(person.number, Purpose::Shikaku);
    for (std::size_t i = 0; i < lists::kShikaku.size(); ++i) {
        if (!random.chance(i == 0 ? 70 : 12)) continue;
        store::Binds row = writer.blank();
        row[社員Code] = person.code;
        row[資格免許] = text(lists::kShikaku[i].code);
        row[業務必要性] = i == 0 ? kNotStated : random.chance(50) ? u"2" : u"3";
        row[取得年月日] = person.birth.addYears(20).addDays(random.below(1500));
        writer.write(row);
    }
}

}  // namespace

void writePeople(store::Connection& cn, const std::vector<Person>& people) {
    TableWriter records(cn, t::履歴書テーブル::kName);
    TableWriter history(cn, t::異動テーブル::kName);
    TableWriter families(cn, t::家族テーブル::kName);
    TableWriter shikaku(cn, t::資格免許テーブル::kName);
    for (const Person& person : people) {
        records.write(recordOf(person, records.blank()));
        writeHistory(history, person);
        writeFamily(families, person);
        writeShikaku(shikaku, person);
    }
}

}  // namespace sample
