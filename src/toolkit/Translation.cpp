#include "toolkit/Translation.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace tavro {

namespace {

bool install(QCoreApplication& application, const QString& file, const QString& folder) {
    auto* translator = new QTranslator(&application);
    return translator->load(file, folder) && application.installTranslator(translator);
}

} // namespace

void installTranslations(QCoreApplication& application) {
    for (auto language : QLocale::system().uiLanguages()) {
        language.replace('-', '_');
        // In English the texts are written.
        if (language.startsWith("en") || installTranslation(application, language))
            return;
    }
}

// The toolkit's own texts are in the same language as the product's, and never in one alone. Its direction
// comes with them, but they may not be installed.
bool installTranslation(QCoreApplication& application, const QString& language) {
    if (!install(application, "tavropro_" + language, ":/translations"))
        return false;
    install(application, "qtbase_" + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    QGuiApplication::setLayoutDirection(QLocale(language).textDirection());
    return true;
}

QString translated(const std::string& text) {
    return QCoreApplication::translate("TavroPRO", text.c_str());
}

} // namespace tavro
