#pragma once

#include <QCoreApplication>
#include <QString>

#include <string>

namespace tavro {

/// Chooses the language of the user's environment, for the product's texts and the toolkit's own. Once,
/// before the first text is shown; English where there is no translation.
void installTranslations(QCoreApplication& application);
/// The same for one language, such as "fr" or "fr_CA", and its direction; false where there is no
/// translation.
bool installTranslation(QCoreApplication& application, const QString& language);

/// A text of the product in the user's language; as it stands where there is no translation.
QString translated(const std::string& text);

} // namespace tavro
