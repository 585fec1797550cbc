// Material libraries from hostile MTL files.
#include "assets/model.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

static void require(bool holds) {
    if (!holds)
        std::abort();
}

static void require_sound(const Material *material) {
    for (const float *colour : {material->ambient, material->diffuse, material->specular}) {
        for (int i = 0; i < 4; i++)
            require(std::isfinite(colour[i]) && colour[i] <= 1.0f);
        require(colour[3] == 1.0f);
    }
    require(material->shininess >= 0.0f && material->shininess <= 128.0f);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::span<const char> mtl(reinterpret_cast<const char *>(data), size);
    Material *materials = nullptr;
    const std::int32_t total = material_load_memory(mtl, &materials);
    for (std::int32_t i = 0; i < total; i++) {
        require_sound(&materials[i]);
        char name[MATERIAL_NAME_SIZE + 1] = {};
        std::memcpy(name, materials[i].name, MATERIAL_NAME_SIZE);
        const std::int32_t found = material_search(materials, total, name);
        require(found >= 0 && found <= i);
    }
    material_unload(materials);
    return 0;
}
