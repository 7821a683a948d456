# The addresses and identifiers that differ from one deployment to the next. They are compiled in;
# the defaults lie under the reserved .example domain and reach nobody.
set(VORN_API_BASE_ADDRESS "http://api.vornvpn.example" CACHE STRING
  "Built-in API base address: scheme and host, no trailing slash")
set(VORN_MIRROR_ADDRESSES
  "https://vorn-us-east.storage.example/cookie.txt;https://vorn-eu-west.storage.example/cookie.txt;https://vorn-ca-central.storage.example/cookie.txt;https://vorn-ap-northeast.storage.example/cookie.txt"
  CACHE STRING "The discovery files, in the order in which they are asked; an empty entry asks nobody")
set(VORN_IP_LOOKUP_ADDRESS "http://ip.vornvpn.example/lookup" CACHE STRING
  "Service that tells the caller's public address; empty: no lookup")
set(VORN_OAUTH_CLIENT_ID "vornvpn-desktop.apps.example" CACHE STRING
  "OAuth 2.0 client identifier of the Google sign-in")
set(VORN_WEB_SIGN_IN_HOST "https://web.vornvpn.example" CACHE STRING
  "Scheme and host of the web sign-in pages, no trailing slash")
set(VORN_CHAT_GROUP_LINK "https://t.me.example/vornvpn" CACHE STRING
  "Invitation link of the Telegram group")
set(VORN_UPDATE_PLACEHOLDER "http://update.vornvpn.example/" CACHE STRING
  "Download address that an update record holds before the server named one")

string(REPLACE ";" "\", \"" VORN_MIRROR_INITIALIZER "${VORN_MIRROR_ADDRESSES}")
configure_file(${CMAKE_SOURCE_DIR}/base/DeploymentValues.h.in
  ${CMAKE_BINARY_DIR}/generated/DeploymentValues.h @ONLY)
