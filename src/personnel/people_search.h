#pragma once
#include <QString>
#include <functional>
#include <vector>

namespace personnel {

/// Finds people by what is typed: words between blanks, each somewhere in the 社員Code, the 氏名 or the
/// フリガナ. Kana of all three forms, both widths and both cases count as the same, and the blank within a
/// name does not count. The folded texts are made once: prepare() makes them before the first search needs
/// them.
class PeopleSearch {
  public:
    static constexpr int kTexts = 3;
    /// The texts of a person: 0 社員Code, 1 氏名, 2 フリガナ.
    using Text = std::function<QString(int row, int text)>;

    void setPeople(int count, Text text);
    int count() const { return count_; }
    void prepare();
    /// The rows that hold every word, in their order; all of them when there is no word.
    std::vector<int> find(const QString& typed);

  private:
    int count_ = 0;
    Text text_;
    std::vector<QString> keys_;
};

}  // namespace personnel
