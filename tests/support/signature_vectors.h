// Made by tools/make_signature_vectors.sh.
#pragma once

inline constexpr char VENDOR_KEY[] =
    "THZ/IRGdgPm24wN9UBz9xinUbRhWT1nnQ4YXL7wniwjFXFDcT845EqiEUwjjv4evqyBZSNM+iruAVdsKBXsezg==";
inline constexpr char STRANGER_KEY[] =
    "q4tpNc5KnIN/D+8QexHF/Lrm2BFlKd7i07swMC8M1ZvbcG+ZT4Gp2AcYAqq2+F3t/ztPM6DM1ram8KCcqT5J1w==";

// Of the 4000 bytes of test_installer, and of its first 3999.
inline constexpr char INSTALLER_SIGNATURE[] =
    "MEYCIQDtLNXKt6JmlBnNq0lfygHL9VamVE+9ZhmV0wmJVi3a7gIhAL/wvuUkR/okvfltEQ1NEhhn8r/"
    "h2nOp77p8cDc7LxC8";
inline constexpr char INSTALLER_SIGNATURE_SHORT[] =
    "MEMCHwlBM/PZRcRWI7AZFvMdWlPAblc3bYMn83GP8ufVb2ICIC167QPkoQ7C+yuNxecfbzjJDqQFa1iKavXgtZzMmhTt";
inline constexpr char STRANGERS_SIGNATURE[] = "MEUCIEKwpufIy9bUeGmGIabVyUm4QP78Qy9aPsyRFAMf9n+"
                                              "nAiEA1rwaLHAqHlATKOPVRVAWB0RrjuqXohn1BPvJow8cXjg=";
inline constexpr char OTHER_FILES_SIGNATURE[] =
    "MEQCIANOc+"
    "zJn3JoNo7sa42Yw5nQYfw1XQtcZjPktZNgcDxxAiAIrDfvlZBVRdc3tsZOHvHycuftXuyLoYDGbILYWj9eiQ==";
