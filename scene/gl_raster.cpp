#include "scene/gl_util.h"

#include "platform/gl.h"

#include <cmath>

static void push_matrices() {
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
}

static void pop_matrices() {
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
}

// A raster position outside the view is invalid and nothing is drawn from it, not even the part of
// a text that reaches into the window. An empty bitmap may move it anywhere.
static void move_raster_position(float x, float y) {
    static const GLubyte empty = 0;
    glBitmap(1, 1, 0.0f, 0.0f, x, y, &empty);
}

void trRasterPos3f(float x, float y, float z) {
    double modelview[16], projection[16];
    double window_x = 0.0, window_y = 0.0, window_z = 0.0;
    GLint viewport[4] = {};
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    if (viewport[2] <= 0 || viewport[3] <= 0 ||
        !gluProject(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z),
                    modelview, projection, viewport, &window_x, &window_y, &window_z))
        return;
    push_matrices();
    glMatrixMode(GL_PROJECTION);
    glOrtho(0.0, viewport[2], 0.0, viewport[3], 0.0, 1.0);
    glRasterPos3d(0.0, 0.0, -window_z);
    move_raster_position(static_cast<float>(window_x), static_cast<float>(window_y));
    pop_matrices();
}

// Works inside a viewport of 2 x 2 pixels around the position, so that it is always in the view.
void glWindowPos4fMESAemulate(float x, float y, float z, float w) {
    const float left = std::floor(x);
    const float bottom = std::floor(y);
    glPushAttrib(GL_TRANSFORM_BIT | GL_VIEWPORT_BIT);
    push_matrices();
    glDepthRange(static_cast<double>(z), static_cast<double>(z));
    glViewport(static_cast<GLint>(left) - 1, static_cast<GLint>(bottom) - 1, 2, 2);
    glRasterPos4f(x - left, y - bottom, 0.0f, w);
    pop_matrices();
    glPopAttrib();
}

void glWindowPos2fMESAemulate(float x, float y) {
    glWindowPos4fMESAemulate(x, y, 0.0f, 1.0f);
}
