// What the three libraries show to their users: one marker per library, since on Windows a symbol is exported by the
// library that defines it and imported by everybody else. ZKIT_STATIC is defined for users of the static libraries.
#pragma once

#if !defined(_WIN32) || defined(ZKIT_STATIC)
#define ZKIT_CORE_API __attribute__((visibility("default")))
#define ZKIT_COLOR_API __attribute__((visibility("default")))
#define ZKIT_IMG_API __attribute__((visibility("default")))
#else
#ifdef zkit_core_EXPORTS
#define ZKIT_CORE_API __declspec(dllexport)
#else
#define ZKIT_CORE_API __declspec(dllimport)
#endif
#ifdef zkit_color_EXPORTS
#define ZKIT_COLOR_API __declspec(dllexport)
#else
#define ZKIT_COLOR_API __declspec(dllimport)
#endif
#ifdef zkit_img_EXPORTS
#define ZKIT_IMG_API __declspec(dllexport)
#else
#define ZKIT_IMG_API __declspec(dllimport)
#endif
#endif
