#pragma once
#include <QDate>
#include <QString>
#include <vector>

#include "sample_company.h"
#include "sample_lists.h"

namespace sample {

/// A row of 異動テーブル in the making. Codes are those of the sample's masters.
struct Position {
    QDate from;
    const char16_t* jiyuu = nullptr;
    const char16_t* syainKubun = nullptr;
    const char16_t* syozokuDai = nullptr;
    const char16_t* syozokuSyou = nullptr;
    const char16_t* yakusyoku = nullptr;
    const char16_t* syokusyu = nullptr;
    const char16_t* course = nullptr;
    int toukyuu = 0;  ///< 1 to 20; 0 for none
    const char16_t* comment = nullptr;
};

struct Person {
    int number = 0;
    QString code;
    QString surname;
    QString surnameKana;
    QString name;
    QString kana;
    bool female = false;
    QDate birth;
    QDate joined;
    QDate retired;  ///< invalid while employed
    const char16_t* gakureki = nullptr;
    const char16_t* saiyou = nullptr;
    const char16_t* jiyuu1 = nullptr;
    const char16_t* jiyuu2 = nullptr;
    const char16_t* jiyuu3 = nullptr;
    const lists::Place* place = nullptr;
    bool unassigned = false;        ///< no run takes the person in, though the position would
    std::vector<Position> history;  ///< ascending by date
};

std::vector<Person> makePeople(const SampleOptions& options);

/// The position in force; null before the first transfer.
const Position* positionAt(const Person& person, QDate date);
int wholeYears(QDate from, QDate to);
/// The index in kCriteria under which a person falls by position and 社員区分; -1 for none.
int criterionAt(const Person& person, QDate date);

}  // namespace sample
