#pragma once

#include <QLatin1String>

// The tunnels that the client knows. A mode is stored as its number; 0 means that none was chosen.
struct TunnelMode {
    int number;
    const char *word; // as the server proposes it
    const char *linkLogName; // as the link log reports it
};

constexpr TunnelMode tunnelModes[] = {
    {1, "sarko2-udp", "Sarko-UDP"},
    {2, "sarko2-wss", "Sarko-WSS"},
    {3, "driver", "Drive"},
    {4, "kcp", "KCP"},
    {5, "openvpn", "OpenVPN(UDP)"},
    {6, "l2tp", "L2TP"},
    {7, "vorn", "Vorn"},
};
