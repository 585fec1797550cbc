// Whom the update service asks: settings of the build (ORVANEL_UPDATE_HOST, ORVANEL_UPDATE_KEY).
#pragma once

struct AutoUpdateServer {
    const char *host; // with ":port" when it is not 80; shown to the user as well
    const char *key;  // as auto_update_key_parse reads it; empty = installers need no signature
};

// Written by tests only, which put their own server in place.
extern AutoUpdateServer auto_update_server;
