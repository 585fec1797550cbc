// A model read from a text, for as long as a test needs it.
#pragma once

#include "assets/model.h"

#include <cstring>
#include <memory>
#include <string>

struct LoadedModel {
    Model model = {};
    std::int32_t result;

    explicit LoadedModel(const std::string &obj, float scale = 1.0f, const char *path = "") {
        const std::unique_ptr<char[]> exact(new char[obj.size()]); // reading behind it is noticed
        std::memcpy(exact.get(), obj.data(), obj.size());
        result = model_load_memory({exact.get(), obj.size()}, path, &model, scale);
    }
    ~LoadedModel() {
        model_unload(&model);
    }
    LoadedModel(const LoadedModel &) = delete;
    LoadedModel &operator=(const LoadedModel &) = delete;
};
