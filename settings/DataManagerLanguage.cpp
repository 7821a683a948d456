#include "settings/DataManager.h"

#include "base/DebugLine.h"

#include <QCoreApplication>
#include <QTranslator>

#include <algorithm>
#include <iterator>

namespace {

struct Language {
    const char *code;
    const char *translation;
    // The two non-Latin names are GBK bytes. They are read as UTF-8 like all the others, so they
    // are no text to show: the scene has a list of its own and uses the indices only.
    const char *name;
};

constexpr Language languages[] = {
    {"_en", ":/internationalization/os_language_English.qm", "English"},
    {"_zh_hk", ":/internationalization/os_language_ChineseTraditional.qm",
        "\xD6\xD0\xCE\xC4\xB7\xB1\xF3\x77"},
    {"_id", ":/internationalization/os_language_Indonesia.qm", "Bahasa Indonesia"},
    {"_ru", ":/internationalization/os_language_Rusia.qm",
        "\xA7\xB2\xA7\xE5\xA7\xE3\xA7\xE3\xA7\xDC\xA7\xDA\xA7\xDB"},
    {"_de", ":/internationalization/os_language_German.qm", "Deutsch"},
};

} // namespace

void DataManager::fillLanguageNames()
{
    for (const Language &language : languages) {
        languageNames.append(QString::fromUtf8(language.name));
    }
}

void DataManager::changeLanguage(int languageIndex)
{
    currentLanguageIndex = languageIndex;
    const bool isKnown = languageIndex >= 0 && languageIndex < int(std::size(languages));
    const Language &language = languages[isKnown ? languageIndex : 0];

    // Installed translators stay: the application asks the last one first, so removing the earlier
    // ones would change nothing that is seen.
    auto *translator = new QTranslator;
    m_translators.append(translator);
    // Exactly this file: left to its defaults, the loader goes on with ever shorter names.
    const auto empty = QLatin1String("");
    const bool isLoaded =
        translator->load(QString::fromLatin1(language.translation), empty, empty, empty);
    if (isLoaded) {
        QCoreApplication::installTranslator(translator);
        softUseLanguage = QString::fromLatin1(language.code);
    }
    debugLine() << "load ret " << isLoaded;
    emit languageChanged();
}

int DataManager::languageTypeTransToInt(const QString &type) const
{
    const auto *const found = std::find_if(std::begin(languages), std::end(languages),
        [&type](const Language &language) { return type == QLatin1String(language.code); });
    return found == std::end(languages) ? 0 : int(std::distance(std::begin(languages), found));
}

QString DataManager::languageTypeTransToString(int type) const { return languageNames.value(type); }
