// OpenGL 1.1 and GLU for the core. On Windows their headers want a few macros of <windows.h>,
// which the core never includes; they are lent here.
#pragma once

#ifdef _WIN32
#ifndef WINGDIAPI
#define WINGDIAPI __declspec(dllimport)
#define ORVANEL_LENT_WINGDIAPI
#endif
#ifndef APIENTRY
#define APIENTRY __stdcall
#define ORVANEL_LENT_APIENTRY
#endif
#ifndef CALLBACK
#define CALLBACK __stdcall
#define ORVANEL_LENT_CALLBACK
#endif
#include <stddef.h> // glu.h uses wchar_t
#endif

#include <GL/gl.h>
#include <GL/glu.h>

#ifdef ORVANEL_LENT_WINGDIAPI
#undef WINGDIAPI
#undef ORVANEL_LENT_WINGDIAPI
#endif
#ifdef ORVANEL_LENT_APIENTRY
#undef APIENTRY
#undef ORVANEL_LENT_APIENTRY
#endif
#ifdef ORVANEL_LENT_CALLBACK
#undef CALLBACK
#undef ORVANEL_LENT_CALLBACK
#endif

#ifndef GL_MULTISAMPLE
#define GL_MULTISAMPLE 0x809D // OpenGL 1.3; <GL/gl.h> of Windows stops at 1.1
#endif
