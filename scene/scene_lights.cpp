#include "scene/scene.h"

#include "platform/gl.h"

static const float LightAmbient[4] = {1.0f, 1.0f, 1.0f, 1.0f};
static const float LightDiffuse[4] = {1.0f, 1.0f, 1.0f, 1.0f};
static const float LightSpecular[4] = {1.0f, 1.0f, 1.0f, 1.0f};

// Up and to the left of the viewer, floor units; its height above the floor's distance.
static constexpr float LIGHT_X = -100.0f;
static constexpr float LIGHT_Y = 100.0f;
static constexpr float LIGHT_Z = 100.0f;

void scene_lights_init() {
    const float position[4] = {LIGHT_X - scene_floor.position_x, LIGHT_Y - scene_floor.position_y,
                               LIGHT_Z + scene_floor.distance, 1.0f};
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glLightfv(GL_LIGHT1, GL_AMBIENT, LightAmbient);
    glLightfv(GL_LIGHT1, GL_DIFFUSE, LightDiffuse);
    glLightfv(GL_LIGHT1, GL_SPECULAR, LightSpecular);
    glLightfv(GL_LIGHT1, GL_POSITION, position);
    glEnable(GL_LIGHT1);
    glEnable(GL_LIGHTING);
}

// The light follows the zoom, but not the scrolling: it is the viewer's lamp.
void scene_draw_lights() {
    const float position[4] = {LIGHT_X, LIGHT_Y, LIGHT_Z + scene_floor.distance, 1.0f};
    glLoadIdentity();
    glLightfv(GL_LIGHT1, GL_POSITION, position);
}
