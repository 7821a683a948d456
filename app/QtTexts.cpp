#include "app/QtTexts.h"

#include "settings/DataManager.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace {

// Exactly one of these files: the loader would go on with the names of other languages.
void load(QTranslator &translator, const QStringList &paths)
{
    QCoreApplication::removeTranslator(&translator);
    const auto none = QLatin1String("");
    for (const QString &path : paths) {
        if (translator.load(path, none, none, none)) {
            QCoreApplication::installTranslator(&translator);
            return;
        }
    }
}

} // namespace

void translateQtTexts(QObject *owner)
{
    auto *const widgets = new QTranslator(owner);
    auto *const controls = new QTranslator(owner);
    const auto loadBoth = [widgets, controls] {
        //: The name of this language in the file names of Qt's own translations.
        const QString language = QCoreApplication::translate("main", "en");
        const QString ending = QLatin1Char('_') + language + QLatin1String(".qm");
        const QString folder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
        load(*widgets,
            {folder + QLatin1String("/qtbase") + ending,
                QLatin1String(":/internationalization/qt") + ending});
        load(*controls, {folder + QLatin1String("/qtquickcontrols") + ending});
    };
    QObject::connect(DataManager::getInstance(), &DataManager::languageChanged, owner, loadBoth);
    loadBoth();
}
