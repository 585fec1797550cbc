#!/bin/bash
# Makes tests/support/signature_vectors.h: keys and signatures as a vendor makes them with openssl
# (docs/security.md). The private keys are thrown away, so every run makes other ones.
set -euo pipefail
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
target=tests/support/signature_vectors.h

# What tests/support/test_installer.h makes: byte i is i modulo 251.
python3 -c "import sys; sys.stdout.buffer.write(bytes(i % 251 for i in range(4000)))" >"$work/installer"
head -c 3999 "$work/installer" >"$work/other"

make_key() { # name
    openssl ecparam -name prime256v1 -genkey -noout -out "$work/$1.pem"
}

public_key() { # name
    openssl ec -in "$work/$1.pem" -pubout -outform DER 2>/dev/null | tail -c 64 | openssl base64 -A
}

sign() { # key, file
    openssl dgst -sha256 -sign "$work/$1.pem" "$work/$2" | openssl base64 -A
}

# Signatures whose numbers are shorter than usual: one in some hundred.
sign_short() { # key, file
    local signature
    while signature=$(sign "$1" "$2"); do
        # The first number's length is the fourth byte; 0x20 and 0x21 are the usual ones.
        [ $((0x$(echo "$signature" | openssl base64 -d -A | xxd -s 3 -l 1 -p))) -lt 32 ] && break
    done
    echo -n "$signature"
}

constant() { # name, value
    printf 'inline constexpr char %s[] =\n    "%s";\n' "$1" "$2"
}

make_key vendor
make_key stranger
{
    echo '// Made by tools/make_signature_vectors.sh.'
    echo '#pragma once'
    echo
    constant VENDOR_KEY "$(public_key vendor)"
    constant STRANGER_KEY "$(public_key stranger)"
    echo
    echo '// Of the 4000 bytes of test_installer, and of its first 3999.'
    constant INSTALLER_SIGNATURE "$(sign vendor installer)"
    constant INSTALLER_SIGNATURE_SHORT "$(sign_short vendor installer)"
    constant STRANGERS_SIGNATURE "$(sign stranger installer)"
    constant OTHER_FILES_SIGNATURE "$(sign vendor other)"
} >"$target"
clang-format-14 -i "$target"
