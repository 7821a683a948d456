#include "api/Endpoints.h"

#include "api/KQHttpManager.h"

#include <QLatin1String>

#include <algorithm>
#include <iterator>

namespace {

using Manager = KQHttpManager;

// "checkUpate" and "registerAactive" are the words that the scenes compare with.
// clang-format off
constexpr Endpoint endpoints[] = {
    // request                      path                                handler                              time-out name
    {Request::Login,                "/api/account/login",               &Manager::dealUserLoginInfo,          "login"},
    {Request::AllLines,             "/api/server/get_all_v2",           &Manager::dealLineInfo,               "allLineInfo"},
    {Request::SearchLines,          "/api/server/get_all_v2",           &Manager::dealLineInfo,               "searchLineInfo"},
    {Request::ThirdLogin,           "/api/account/third_login",         &Manager::dealUserLoginInfo,          "login"},
    {Request::VisitorLogin,         "/api/account/visitor_login",       &Manager::dealUserVisitorLoginInfo,   "login"},
    {Request::CheckUpdate,          "/api/system/updateInfo",           &Manager::dealUpdateInfo,             "checkUpate"},
    {Request::Init,                 "/api/system/index",                &Manager::dealInitInfo,               "init"},
    {Request::EmailCode,            "/api/account/getemailcode",        &Manager::dealEmailCodeInfo,          "emailCode"},
    {Request::Register,             "/api/account/register",            &Manager::dealUserRegisterInfo,       "register"},
    {Request::RegisterActive,       "/api/account/register_active",     &Manager::dealUserRegisterActiveInfo, "registerAactive"},
    {Request::FindPassword,         "/api/account/forget",              &Manager::dealFindPasswdInfo,         "findPasswd"},
    {Request::FeedBack,             "/api/system/feedback",             &Manager::dealFeedBackInfo,           "feedback"},
    {Request::UserInfo,             "/api/account/get_info",            &Manager::dealUserInfo,               "userInfo"},
    {Request::OperationRecord,      "/api/system/operation",            &Manager::dealOperationRecord,        "operationRecord"},
    {Request::PushLinkLog,          "/api/server/push_connect_state",   &Manager::dealPushLinkLog,            "serverPushLinkLog"},
    {Request::LineFeedBackQuestion, "/api/system/questions",            &Manager::dealLineFeedBackQuestion,   "lineFeedBackQuestion"},
    {Request::PushMyIp,             "/api/server/push_myip",            &Manager::dealPushMyIp,               nullptr},
    {Request::PushSearchLineWord,   "/api/server/push_search_word",     &Manager::dealPushSearchLineWord,     nullptr},
    {Request::HotUpdate,            "/api/system/hot_update",           &Manager::dealHotUpdate,              "hotUpdate"},
    {Request::PushLanguage,         "/api/system/push_language",        &Manager::dealPushLanguage,           nullptr},
    {Request::PushLog,              "/api/system/log",                  &Manager::dealPushLog,                nullptr},
    {Request::CheckRegion,          "/api/system/region",               &Manager::dealCheckRegion,            "checkRegion"},
    {Request::DownloadLink,         "/api/system/send_download_link",   &Manager::dealDownloadLink,           "downloadLink"},
};
// clang-format on

constexpr bool rowsStandInTheOrderOfRequests()
{
    for (std::size_t row = 0; row < std::size(endpoints); ++row) {
        if (endpoints[row].request != static_cast<Request>(row)) {
            return false;
        }
    }
    return std::size(endpoints) == static_cast<std::size_t>(Request::Count);
}
static_assert(rowsStandInTheOrderOfRequests());

} // namespace

const Endpoint &endpointOf(Request request) { return endpoints[static_cast<std::size_t>(request)]; }

const Endpoint *findEndpoint(QStringView path)
{
    const auto row = std::find_if(std::begin(endpoints), std::end(endpoints),
        [path](const Endpoint &endpoint) { return path == QLatin1String(endpoint.path); });
    return row == std::end(endpoints) ? nullptr : row;
}
