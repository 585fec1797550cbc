#include "scene/gl_util.h"

#include "platform/gl.h"

// Above the usual 1.0 and clamped to it by OpenGL; kept as the main window has always had it.
static constexpr double CLEAR_DEPTH = 1.01;

void gl_init_state() {
    glShadeModel(GL_SMOOTH);
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClearDepth(CLEAR_DEPTH);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(GL_NORMALIZE);
    glEnable(GL_MULTISAMPLE);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
}
