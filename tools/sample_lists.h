#pragma once
#include <QString>
#include <vector>

/// The fixed lists out of which the sample company is made.
namespace sample::lists {

struct Name {
    const char16_t* text;
    const char16_t* kana;  ///< half-width
};
struct Entry {
    const char16_t* code;
    const char16_t* name;
};
struct SyozokuSyou {
    const char16_t* syozokuDai;
    const char16_t* code;  ///< unique over all 所属大
    const char16_t* name;
};
struct Gakureki {
    const char16_t* code;
    const char16_t* name;
    int taiouNenrei;
};
struct Zokugara {
    const char16_t* code;
    const char16_t* name;
    const char16_t* group;  ///< null for a relation without a group
};
struct Place {
    const char16_t* yuubin;
    const char16_t* juusyo;  ///< a house number follows
    const char16_t* tel;     ///< four digits follow
    int prefecture;
};

extern const std::vector<Name> kSurnames, kMale, kFemale;
extern const std::vector<Entry> kSyainKubun, kSyozokuDai, kYakusyoku, kSyokusyu, kCourse, kIdouJiyuu,
    kJuutaku, kSaiyou, kSyussinchi, kJiyuu1, kJiyuu2, kJiyuu3, kShikaku, kZokugaraGroup;
extern const std::vector<SyozokuSyou> kSyozokuSyou;
extern const std::vector<Gakureki> kGakureki;
extern const std::vector<Zokugara> kZokugara;
extern const std::vector<Place> kPlaces;
extern const std::vector<const char16_t*> kHouses;

}  // namespace sample::lists
