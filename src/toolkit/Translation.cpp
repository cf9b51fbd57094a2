#include "toolkit/Translation.h"

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

// The toolkit's own texts are in the same language as the product's, and never in one alone.
void installTranslations(QCoreApplication& application) {
    for (auto language : QLocale::system().uiLanguages()) {
        language.replace('-', '_');
        if (language.startsWith("en")) // in which the texts are written
            return;
        if (!install(application, "tavropro_" + language, ":/translations"))
            continue;
        install(application, "qtbase_" + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        return;
    }
}

QString translated(const std::string& text) {
    return QCoreApplication::translate("TavroPRO", text.c_str());
}

} // namespace tavro
