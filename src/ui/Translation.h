#pragma once

#include <QCoreApplication>
#include <QString>

#include <string>

namespace tavro {

/// A text of the product in the user's language; as it stands where there is no translation.
inline QString translated(const std::string& text) {
    return QCoreApplication::translate("TavroPRO", text.c_str());
}

} // namespace tavro
