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
    const char *shownName; // in the scene's list
    // What languageTypeTransToString() answers. The two non-Latin names are GBK bytes that are read
    // as UTF-8 like all the others, so they are no text to show; callers know them as they are.
    const char *storedName;
};

constexpr Language languages[] = {
    {"_en", ":/internationalization/os_language_English.qm", "English", "English"},
    {"_zh_hk", ":/internationalization/os_language_ChineseTraditional.qm", "中文繁體",
        "\xD6\xD0\xCE\xC4\xB7\xB1\xF3\x77"},
    {"_id", ":/internationalization/os_language_Indonesia.qm", "Indonesia", "Bahasa Indonesia"},
    {"_ru", ":/internationalization/os_language_Rusia.qm", "Русский",
        "\xA7\xB2\xA7\xE5\xA7\xE3\xA7\xE3\xA7\xDC\xA7\xDA\xA7\xDB"},
    {"_de", ":/internationalization/os_language_German.qm", "Deutsch", "Deutsch"},
};

} // namespace

void DataManager::fillLanguageNames()
{
    for (const Language &language : languages) {
        languageNames.append(QString::fromUtf8(language.storedName));
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

QStringList DataManager::getLanguageList() const
{
    QStringList names;
    for (const Language &language : languages) {
        names.append(QString::fromUtf8(language.shownName));
    }
    return names;
}

QString DataManager::languageTypeTransToString(int type) const { return languageNames.value(type); }
