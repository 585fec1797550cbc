#include "scene/scene_materials.h"

#include "platform/gl.h"

void scene_flat_material() {
    glMaterialfv(GL_FRONT, GL_SPECULAR, scene_floor_specular);
    glMaterialf(GL_FRONT, GL_SHININESS, 0.0f);
    glMaterialfv(GL_FRONT, GL_EMISSION, scene_floor_emission);
    glNormal3f(0.0f, 0.0f, 1.0f);
}

void scene_flat_colour(const float (&colour)[4]) {
    glMaterialfv(GL_FRONT, GL_AMBIENT_AND_DIFFUSE, colour);
}
