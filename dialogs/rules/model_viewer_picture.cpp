#include "dialogs/rules/model_viewer_picture.h"

#include "assets/model.h"
#include "dialogs/rules/model_spin.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/resource.h"
#include "platform/text.h"
#include "resources/resource_ids.h"

#include <algorithm>

std::int32_t model_viewer_model_id = -1;
std::uint32_t model_viewer_floor_texture;

const float model_viewer_LightAmbient[4] = {1.0f, 1.0f, 1.0f, 1.0f};
const float model_viewer_LightDiffuse[4] = {1.0f, 1.0f, 1.0f, 1.0f};
const float model_viewer_LightSpecular[4] = {1.0f, 1.0f, 1.0f, 1.0f};
const float model_viewer_floor_colour[4] = {1.0f, 1.0f, 1.0f, 0.65f};
const float model_viewer_floor_specular[4] = {0.0f, 0.0f, 0.0f, 1.0f};
const float model_viewer_floor_emission[4] = {0.0f, 0.0f, 0.0f, 1.0f};

static constexpr float LIGHT_POSITION[4] = {-5.0f, 5.0f, 20.0f, 1.0f}; // as seen by the eye
static constexpr double CLEAR_DEPTH = 1.01;                            // as in the main window
static constexpr double VIEW_ANGLE = 35.0;                             // degrees, vertical
static constexpr double VIEW_NEAR = 5.0;
static constexpr double VIEW_FAR = 100.0;
static constexpr float TILT = 20.0f;          // degrees, the eye looks down on the floor
static constexpr float SHOWN_HEIGHT = 8.0f;   // of every model
static constexpr float FLOOR_HEIGHT = -11.0f; // where the floor lies
static constexpr float MODEL_DISTANCE = -20.0f;
static constexpr float FLOOR_DISTANCE = -30.0f; // of its middle
static constexpr float FLOOR_REACH = 16.0f;     // half of its side

// A display list belongs to the context in which it was compiled, and the models remember those of
// the main window. The preview has one of its own, of the model it showed last. It goes by the
// name, because different models come under the id MODEL_PREVIEW.
struct OwnList {
    char file_name[sizeof Model::file_name];
    std::uint32_t display_list; // 0 = none
};
static OwnList own_list;

// ---- life

// The materials of a model are those of the front faces. Following the colour is therefore set for
// the back faces, which nobody sees: on the front it would paint every model white.
static void enable_colour_material() {
    glColorMaterial(GL_BACK, GL_AMBIENT_AND_DIFFUSE);
    glEnable(GL_COLOR_MATERIAL);
}

void model_viewer_picture_init(ViewerColour background) {
    own_list = {};
    glClearColor(background.red, background.green, background.blue, 1.0f);
    glShadeModel(GL_SMOOTH);
    glClearDepth(CLEAR_DEPTH);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    enable_colour_material();
    glEnable(GL_NORMALIZE); // models of all sizes are lit alike
    glEnable(GL_MULTISAMPLE);
    glEnable(GL_CULL_FACE);
    model_viewer_lights_init();
    model_viewer_load_floor_texture();
}

void model_viewer_lights_init() {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glLightfv(GL_LIGHT2, GL_AMBIENT, model_viewer_LightAmbient);
    glLightfv(GL_LIGHT2, GL_DIFFUSE, model_viewer_LightDiffuse);
    glLightfv(GL_LIGHT2, GL_SPECULAR, model_viewer_LightSpecular);
    glLightfv(GL_LIGHT2, GL_POSITION, LIGHT_POSITION);
    glEnable(GL_LIGHT2);
    glEnable(GL_LIGHTING);
}

// OpenGL 1.1 knows no pixels that begin with blue.
static void swap_red_and_blue(BitmapPixels *pixels) {
    for (std::size_t i = 0; i + 2 < pixels->bytes.size(); i += 3)
        std::swap(pixels->bytes[i], pixels->bytes[i + 2]);
}

void model_viewer_load_floor_texture() {
    BitmapPixels pixels;
    model_viewer_floor_texture = 0;
    if (resource_bitmap(RESOURCE_VIEWER_FLOOR, &pixels) != 0)
        return;
    swap_red_and_blue(&pixels);
    glGenTextures(1, &model_viewer_floor_texture);
    glBindTexture(GL_TEXTURE_2D, model_viewer_floor_texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, pixels.width, pixels.height, 0, GL_RGB, GL_UNSIGNED_BYTE,
                 pixels.bytes.data());
}

static void free_own_list() {
    if (own_list.display_list != 0)
        glDeleteLists(own_list.display_list, 1);
    own_list = {};
}

void model_viewer_picture_free() {
    free_own_list();
    if (model_viewer_floor_texture != 0)
        glDeleteTextures(1, &model_viewer_floor_texture);
    model_viewer_floor_texture = 0;
}

void model_viewer_resize(std::int32_t width, std::int32_t height) {
    const std::int32_t divisor = std::max(height, 1);
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(VIEW_ANGLE, static_cast<double>(width) / divisor, VIEW_NEAR, VIEW_FAR);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

// ---- drawing

// Draws a copy of the record so that the model itself goes on naming the main window's list.
static void draw_model(std::int32_t id) {
    Model shown = models[id];
    if (!text_equal(own_list.file_name, shown.file_name))
        free_own_list();
    shown.display_list = own_list.display_list;
    shown.display_list_compiled = own_list.display_list != 0 ? 1 : 0;
    model_draw(&shown);
    if (shown.display_list_compiled == 1)
        own_list.display_list = shown.display_list;
    text_copy(own_list.file_name, shown.file_name);
}

static void place(float height, float distance) {
    glLoadIdentity();
    glRotatef(TILT, 1.0f, 0.0f, 0.0f);
    glTranslatef(0.0f, height, distance);
}

static void draw_reflection(std::int32_t id, float scale) {
    place(scale * models[id].min_y + FLOOR_HEIGHT, MODEL_DISTANCE);
    glRotatef(model_viewer_model_angle, 0.0f, 1.0f, 0.0f);
    glScalef(scale, -scale, scale);
    glCullFace(GL_FRONT); // the mirror turns the faces round
    draw_model(id);
}

static void floor_material() {
    glMaterialfv(GL_FRONT, GL_AMBIENT_AND_DIFFUSE, model_viewer_floor_colour);
    glMaterialfv(GL_FRONT, GL_SPECULAR, model_viewer_floor_specular);
    glMaterialf(GL_FRONT, GL_SHININESS, 0.0f);
    glMaterialfv(GL_FRONT, GL_EMISSION, model_viewer_floor_emission);
}

static void floor_quad() {
    glBegin(GL_QUADS);
    glNormal3f(0.0f, 0.0f, 1.0f);
    glTexCoord2f(0.0f, 0.0f);
    glVertex3f(-FLOOR_REACH, 0.0f, FLOOR_REACH);
    glTexCoord2f(1.0f, 0.0f);
    glVertex3f(FLOOR_REACH, 0.0f, FLOOR_REACH);
    glTexCoord2f(1.0f, 1.0f);
    glVertex3f(FLOOR_REACH, 0.0f, -FLOOR_REACH);
    glTexCoord2f(0.0f, 1.0f);
    glVertex3f(-FLOOR_REACH, 0.0f, -FLOOR_REACH);
    glEnd();
}

static void draw_floor() {
    glCullFace(GL_BACK);
    place(FLOOR_HEIGHT, FLOOR_DISTANCE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, model_viewer_floor_texture);
    floor_material();
    floor_quad();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
}

static void draw_standing(std::int32_t id, float scale) {
    place(FLOOR_HEIGHT - scale * models[id].min_y, MODEL_DISTANCE);
    glRotatef(model_viewer_model_angle, 0.0f, 1.0f, 0.0f);
    glScalef(scale, scale, scale);
    draw_model(id);
}

static bool is_model(std::int32_t id) {
    if (id == MODEL_PREVIEW)
        return models[id].file_name[0] != '\0';
    return id >= 0 && id < models_total;
}

void model_viewer_picture_draw() {
    const std::int32_t id = model_viewer_model_id;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!is_model(id))
        return;
    // The padding makes every box at least 1 high.
    const float scale = SHOWN_HEIGHT / (models[id].max_y - models[id].min_y);
    if (orvanel_options.reflections == 1)
        draw_reflection(id, scale);
    draw_floor();
    draw_standing(id, scale);
}
