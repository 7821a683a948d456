#pragma once

#include <QJsonObject>
#include <QStringView>

class KQHttpManager;

// What the server can be asked, in the order in which replies are matched.
enum class Request {
    Login,
    AllLines,
    SearchLines,
    ThirdLogin,
    VisitorLogin,
    CheckUpdate,
    Init,
    EmailCode,
    Register,
    RegisterActive,
    FindPassword,
    FeedBack,
    UserInfo,
    OperationRecord,
    PushLinkLog,
    LineFeedBackQuestion,
    PushMyIp,
    PushSearchLineWord,
    HotUpdate,
    PushLanguage,
    PushLog,
    CheckRegion,
    DownloadLink,
    Count // of the others
};

// One row of the table that posting, routing and time-outs all follow from.
struct Endpoint {
    Request request;
    const char *path; // put directly behind the base address
    void (KQHttpManager::*deal)(QJsonObject &object);
    const char *timeOutName; // as the scenes match it; null: a time-out is not reported
};

const Endpoint &endpointOf(Request request);

// The first row with this path, or null. Only the catalogue's path stands in two rows, so a search
// is dealt with and reported as the whole catalogue.
const Endpoint *findEndpoint(QStringView path);
