#include "sample_people.h"

#include <algorithm>

#include "sample_random.h"

namespace sample {
namespace {

constexpr int kPattern = 50;  ///< careers repeat with every fifty codes; only the random part differs

enum class Role { Yakuin, Kanri, Ippan, Part, Syokutaku };

const char16_t* const kSeisyain = u"01";
const char16_t* const kSyokutakuKubun = u"02";
const char16_t* const kPartKubun = u"03";
const char16_t* const kYakuinKubun = u"04";

int slotOf(int number) {
    return (number - 1) % kPattern + 1;
}

int slotOf(const char16_t* code) {
    return QString::fromUtf16(code).toInt();
}

Role roleOf(int slot) {
    if (slot <= 2) return Role::Yakuin;
    if (slot <= 11) return Role::Kanri;
    if (slot >= 37 && slot <= 43) return Role::Part;
    if (slot >= 44 && slot <= 49) return Role::Syokutaku;
    return Role::Ippan;
}

/// Ages at the 2026/4/1 from which the calendar of a life is counted.
std::pair<int, int> agesOf(Role role) {
    switch (role) {
        case Role::Yakuin:
            return {56, 65};
        case Role::Kanri:
            return {42, 58};
        case Role::Ippan:
            return {26, 48};
        case Role::Part:
            return {28, 62};
        case Role::Syokutaku:
            return {62, 64};
    }
    return {30, 40};
}

QDate schoolLeaving(QDate birth, int taiouNenrei) {
    const int year = birth.month() >= 4 ? birth.year() : birth.year() - 1;
    return {year + taiouNenrei + 1, 4, 1};
}

void giveName(Person& person, Random& random) {
    const lists::Name& surname = random.pick(lists::kSurnames);
    const lists::Name& given = random.pick(person.female ? lists::kFemale : lists::kMale);
    person.surname = QString::fromUtf16(surname.text);
    person.surnameKana = QString::fromUtf16(surname.kana);
    person.name = person.surname + u'　' + QString::fromUtf16(given.text);
    person.kana = person.surnameKana + u' ' + QString::fromUtf16(given.kana);
}

/// Birth, school and the day of joining.
void giveLife(Person& person, Role role, Random& random) {
    const auto [youngest, oldest] = agesOf(role);
    const int age = random.between(youngest, oldest);
    person.birth = QDate(2026 - age, random.between(1, 12), 1).addDays(random.below(28));
    const lists::Gakureki& school =
        lists::kGakureki[static_cast<std::size_t>(random.chance(55) ? 4 : random.between(1, 5))];
    person.gakureki = school.code;
    person.saiyou = u"01";
    person.joined = schoolLeaving(person.birth, school.taiouNenrei);
    if (role == Role::Part) {
        person.saiyou = u"03";
        person.joined = QDate(random.between(2012, 2024), random.between(1, 12), 16);
    } else if (random.chance(30)) {
        const QDate later(person.joined.year() + random.between(2, 9), random.between(1, 12), 1);
        if (later.year() < 2025) {
            person.joined = later;
            person.saiyou = u"02";
        }
    }
}

const char16_t* syokusyuOf(const char16_t* syozokuDai) {
    switch (syozokuDai[1]) {
        case u'3':
        case u'4':
            return u"02";
        case u'5':
            return u"03";
        case u'6':
            return u"04";
        default:
            return u"01";
    }
}

Position placed(const lists::SyozokuSyou& where) {
    Position position{};
    position.syainKubun = kSeisyain;
    position.syozokuDai = where.syozokuDai;
    position.syozokuSyou = where.code;
    position.yakusyoku = u"06";
    position.syokusyu = syokusyuOf(where.syozokuDai);
    position.course = u"01";
    return position;
}

/// The titles of a career in ascending order, and the last one that a role reaches.
const char16_t* titleOf(int step) {
    static const char16_t* const kTitles[] = {u"06", u"05", u"04", u"03", u"02", u"01"};
    return kTitles[std::clamp(step, 0, 5)];
}

int lastTitle(Role role, int years, Random& random) {
    if (role == Role::Yakuin) return 5;
    if (role == Role::Kanri) return 3 + random.below(3);
    return std::clamp(years / 7, 0, 2);
}

int lastGrade(Role role, int years, Random& random) {
    if (role == Role::Yakuin) return 20;
    if (role == Role::Kanri) return random.between(13, 18);
    return std::clamp(2 + years / 3 + random.below(2), 2, 12);
}

/// 新規採用 and the transfers of a regular employee up to 2025, each on a first of April.
void giveCareer(Person& person, Role role, Random& random) {
    Position position = placed(random.pick(lists::kSyozokuSyou));
    position.from = person.joined;
    position.jiyuu = u"01";
    position.toukyuu = 1;
    if (role == Role::Ippan && random.chance(35)) position.course = random.chance(50) ? u"02" : u"03";
    person.history.push_back(position);

    const int span = std::max(0, 2025 - person.joined.year() - random.below(2));
    const int moves = std::min(role == Role::Ippan ? span / 4 : 3 + random.below(2), std::min(span, 4));
    const int title = lastTitle(role, span, random);
    const int grade = lastGrade(role, span, random);
    for (int move = 1; move <= moves; ++move) {
        const char16_t* const course = position.course;
        const char16_t* const before = person.history.back().yakusyoku;
        if (random.chance(60)) position = placed(random.pick(lists::kSyozokuSyou));
        position.course = course;
        position.from = QDate(person.joined.year() + span * move / moves, 4, 1);
        position.yakusyoku = titleOf(title * move / moves);
        position.toukyuu = 1 + (grade - 1) * move / moves;
        position.jiyuu = before == position.yakusyoku ? u"02" : u"03";
        if (position.from > person.history.back().from) person.history.push_back(position);
    }
}

void addTransfer(Person& person, QDate from, const char16_t* jiyuu, const char16_t* comment = nullptr) {
    Position position = person.history.back();
    position.from = from;
    position.jiyuu = jiyuu;
    position.comment = comment;
    person.history.push_back(position);
}

void giveRole(Person& person, Role role, Random& random) {
    if (role == Role::Part) {
        Position position = placed(random.pick(lists::kSyozokuSyou));
        position.from = person.joined;
        position.jiyuu = u"01";
        position.syainKubun = kPartKubun;
        position.course = nullptr;
        person.history.push_back(position);
        return;
    }
    giveCareer(person, role, random);
    if (role == Role::Syokutaku) {
        const QDate sixty = person.birth.addYears(60);
        const QDate rehired(sixty.year() + (sixty.month() >= 4 ? 1 : 0), 4, 1);
        std::erase_if(person.history, [&](const Position& position) { return position.from >= rehired; });
        addTransfer(person, rehired, u"06", u"定年後再雇用");
        person.history.back().syainKubun = kSyokutakuKubun;
        person.history.back().yakusyoku = u"06";
        person.history.back().course = u"04";
        person.saiyou = u"04";
    } else if (role == Role::Yakuin) {
        addTransfer(person, QDate(2025, 6, 27), u"06", u"取締役就任");
        person.history.back().syainKubun = kYakuinKubun;
    } else if (random.chance(25)) {
        addTransfer(person, QDate(2026, 4, 1), u"04");
        person.history.back().toukyuu = std::min(20, person.history.back().toukyuu + 1);
    }
}

void joinLate(Person& person, QDate joined, QDate birth) {
    person.birth = birth;
    person.joined = joined;
    person.gakureki = u"05";
    person.saiyou = joined.month() == 4 ? u"01" : u"02";
    Position position = person.history.front();
    position.from = joined;
    position.jiyuu = u"01";
    position.syainKubun = kSeisyain;
    position.yakusyoku = u"06";
    position.toukyuu = 2;
    person.history = {position};
}

void retire(Person& person, QDate retired) {
    person.retired = retired;
    std::erase_if(person.history, [&](const Position& position) { return position.from > retired; });
}

/// What happens to the people who are named in People, and to those on the same place of each further fifty.
void giveStory(Person& person, int slot) {
    if (slot == slotOf(People::kRetiredOnFirstDate)) retire(person, kijunbi(0));
    if (slot == slotOf(People::kRetiredBeforeFirst)) {
        person.joined = std::min(person.joined, QDate(2020, 4, 1));
        person.history.front().from = person.joined;
        retire(person, QDate(2024, 3, 31));
    }
    if (slot == slotOf(People::kRetiredBetween)) retire(person, QDate(2026, 3, 31));
    if (slot == slotOf(People::kFutureTransfer)) addTransfer(person, QDate(2027, 4, 1), u"02", u"内示済み");
    if (slot == slotOf(People::kFutureTransfer2)) addTransfer(person, QDate(2027, 1, 1), u"07");
    if (slot == slotOf(People::kPromoted)) {
        addTransfer(person, QDate(2026, 10, 1), u"03");
        person.history.back().yakusyoku = u"03";
    }
    if (slot == slotOf(People::kJoinedBetween)) joinLate(person, QDate(2026, 4, 1), QDate(2003, 6, 11));
    if (slot == slotOf(People::kJoinedAfterLastRun)) {
        joinLate(person, QDate(2026, 10, 1), QDate(1994, 9, 3));
        person.unassigned = true;
    }
    if (slot == slotOf(People::kWithoutTransfer)) {
        person.joined = QDate(2026, 11, 1);
        person.history.clear();
    }
    if (person.number == slotOf(People::kLongName)) {
        person.female = false;
        person.surname = QStringLiteral("勅使河原");
        person.surnameKana = QStringLiteral("ﾃｼｶﾞﾜﾗ");
        person.name = QStringLiteral("勅使河原　源五左衛門");
        person.kana = QStringLiteral("ﾃｼｶﾞﾜﾗ ｹﾞﾝｺﾞｻﾞｴﾓﾝ");
    }
}

/// The free attributes follow the last position: 職能資格, 勤務地, 組合.
void giveAttributes(Person& person) {
    const Position* const last = person.history.empty() ? nullptr : &person.history.back();
    const bool part = last && last->syainKubun == kPartKubun;
    if (last && last->toukyuu > 0)
        person.jiyuu1 = lists::kJiyuu1[static_cast<std::size_t>(std::min(5, last->toukyuu / 3))].code;
    if (!last) return;
    const char16_t dai = last->syozokuDai[1];
    person.jiyuu2 = dai == u'5' ? u"02" : dai == u'4' ? u"04" : u"01";
    const bool manager = last->yakusyoku[1] <= u'3';
    person.jiyuu3 = part || manager || last->syainKubun != kSeisyain ? u"02" : u"01";
}

Person makePerson(int number, Spread spread) {
    Person person;
    Random random(number, Purpose::Person);
    Random career(number, Purpose::Career);
    const int slot = slotOf(number);
    const Role role = spread == Spread::OneCriterion ? Role::Ippan : roleOf(slot);
    person.number = number;
    person.code = QString::number(number).rightJustified(6, u'0');
    person.female = random.chance(role == Role::Kanri || role == Role::Yakuin ? 20 : 45);
    giveName(person, random);
    giveLife(person, role, random);
    person.place = &random.pick(lists::kPlaces);
    giveRole(person, role, career);
    if (spread == Spread::Mixed) giveStory(person, slot);
    giveAttributes(person);
    return person;
}

}  // namespace

std::vector<Person> makePeople(const SampleOptions& options) {
    std::vector<Person> people;
    people.reserve(static_cast<std::size_t>(options.employees));
    for (int number = 1; number <= options.employees; ++number)
        people.push_back(makePerson(number, options.spread));
    return people;
}

const Position* positionAt(const Person& person, QDate date) {
    const Position* found = nullptr;
    for (const Position& position : person.history)
        if (position.from <= date) found = &position;
    return found;
}

int wholeYears(QDate from, QDate to) {
    const bool before = to.month() < from.month() || (to.month() == from.month() && to.day() < from.day());
    return to.year() - from.year() - (before ? 1 : 0);
}

int criterionAt(const Person& person, QDate date) {
    const Position* const position = positionAt(person, date);
    if (!position || person.unassigned) return -1;
    switch (position->syainKubun[1]) {
        case u'1':
            return position->yakusyoku[1] <= u'3' ? 1 : 0;
        case u'2':
            return 3;
        case u'3':
            return 2;
        default:
            return -1;
    }
}

}  // namespace sample
