#pragma once

namespace forms {

/// The help books. The companions' two are never opened here; they are only told to close.
enum class HelpFile { Mhelp, Jhelp, Shelp, Hhelp, Chelp };

/// A page of a book; the page's file is <bunya>_<number>.html.
struct HelpTopic {
    HelpFile file;
    int number;
    bool operator==(const HelpTopic&) const = default;
};

}  // namespace forms
