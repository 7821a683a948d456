#include "settings/DataManager.h"

#include "base/DebugLine.h"

#include <QStringList>

// What the first key word that a field holds does with the value behind its "=".
struct DataManager::SignInField {
    const char *keyWord;
    const char *label;
    QString DataManager::*member;
    bool hasEncodedBlanks;
};

void DataManager::takeSignInFields(const QString &text, std::initializer_list<SignInField> known)
{
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString &part : parts) {
        for (const SignInField &field : known) {
            if (!part.contains(QLatin1String(field.keyWord))) {
                continue;
            }
            QString value = part.split(QLatin1Char('=')).value(1);
            if (field.hasEncodedBlanks) {
                value.replace(QLatin1String("%20"), QLatin1String(" "));
            }
            this->*field.member = value;
            debugLine() << field.label << value;
            break;
        }
    }
}

bool DataManager::analysisGoogleInfo(const QString &info)
{
    // Bare words, the first match wins: a picture whose address holds "id" counts as the id.
    static constexpr std::initializer_list<SignInField> fields = {
        {"email", "emial:", &DataManager::userName, false},
        {"id", "userGoogleId:", &DataManager::userGoogleId, false},
        {"name", "userNickName:", &DataManager::userNickName, true},
        {"picture", "userGooglePicture:", &DataManager::userGooglePicture, false},
    };
    if (!info.contains(QLatin1String("--gl"))) {
        return false;
    }
    const QString text = info.split(QLatin1String("--gl:")).value(1);
    debugLine() << text;
    takeSignInFields(text, fields);
    return true;
}

bool DataManager::analysisFacebookInfo(const QString &info)
{
    static constexpr std::initializer_list<SignInField> fields = {
        {"email=", "emial:", &DataManager::userName, false},
        {"id=", "userfacebookId:", &DataManager::userGoogleId, false}, // one slot for both ids
        {"name=", "userNickName:", &DataManager::userNickName, true},
    };
    debugLine() << "facebook 登录信息:" << info;
    if (!info.contains(QLatin1String("--fb"))) {
        return false;
    }
    const QString text = info.split(QLatin1String("--fb:")).value(1);
    // Taken before the fields are cut: these addresses hold commas and "=".
    const QStringList aroundPicture = text.split(QLatin1String("picture="));
    if (aroundPicture.size() > 1) {
        userGooglePicture = aroundPicture.at(1);
        debugLine() << "userFacebookPicture:" << userGooglePicture;
    }
    takeSignInFields(text, fields);
    return true;
}
