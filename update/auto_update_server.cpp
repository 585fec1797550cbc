#include "update/auto_update_server.h"

#include "update/auto_update_signature.h"

static_assert(sizeof ORVANEL_UPDATE_HOST > 1, "ORVANEL_UPDATE_HOST is empty");
static_assert(
    [] {
        SignatureKey key = {};
        return sizeof ORVANEL_UPDATE_KEY == 1 || auto_update_key_parse(ORVANEL_UPDATE_KEY, &key);
    }(),
    "ORVANEL_UPDATE_KEY is no public key: see docs/security.md");

AutoUpdateServer auto_update_server = {ORVANEL_UPDATE_HOST, ORVANEL_UPDATE_KEY};
