#pragma once
#include <QString>
#include <vector>

namespace shell {

/// A library that goes with the program, or that it is linked with.
struct Library {
    QString name;
    QString purpose;
    QString licence;
};
const std::vector<Library>& usedLibraries();

/// A text that goes with the program: what it belongs to, and the file in its resources.
struct LicenceText {
    QString title;
    QString file;
};
/// Every notice of the libraries and the full text of each licence that a notice refers to.
const std::vector<LicenceText>& licenceTexts();

}  // namespace shell
