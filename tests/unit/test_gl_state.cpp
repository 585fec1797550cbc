#include "scene/gl_util.h"

#include "platform/gl.h"
#include "tests/support/gl_context.h"

#include <gtest/gtest.h>

static GLint integer(GLenum name) {
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

// As far from what the scene relies on as it can be.
static void disturb_state() {
    glShadeModel(GL_FLAT);
    glClearColor(1.0f, 1.0f, 1.0f, 1.0f);
    glClearDepth(0.5);
    glDepthFunc(GL_NEVER);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_FASTEST);
    glCullFace(GL_FRONT);
    for (const GLenum state : {GL_DEPTH_TEST, GL_NORMALIZE, GL_MULTISAMPLE, GL_CULL_FACE})
        glDisable(state);
}

TEST(GlState, is_what_the_scene_relies_on_whatever_it_was) {
    const GlContext context(16, 16);
    disturb_state();
    gl_init_state();
    EXPECT_EQ(integer(GL_SHADE_MODEL), GL_SMOOTH);
    EXPECT_EQ(integer(GL_DEPTH_FUNC), GL_LEQUAL);
    EXPECT_EQ(integer(GL_PERSPECTIVE_CORRECTION_HINT), GL_NICEST);
    EXPECT_EQ(integer(GL_CULL_FACE_MODE), GL_BACK);
    for (const GLenum state : {GL_DEPTH_TEST, GL_NORMALIZE, GL_MULTISAMPLE, GL_CULL_FACE})
        EXPECT_TRUE(glIsEnabled(state)) << state;
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(GlState, clears_to_transparent_black_as_far_away_as_can_be) {
    const GlContext context(16, 16);
    disturb_state();
    gl_init_state();
    float colour[4] = {1.0f, 1.0f, 1.0f, 1.0f}, depth = 0.0f;
    glGetFloatv(GL_COLOR_CLEAR_VALUE, colour);
    glGetFloatv(GL_DEPTH_CLEAR_VALUE, &depth);
    for (const float component : colour)
        EXPECT_EQ(component, 0.0f);
    EXPECT_EQ(depth, 1.0f);
}
