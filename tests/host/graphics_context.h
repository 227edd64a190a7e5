#pragma once

#include <epoxy/egl.h>
#include <epoxy/gl.h>

namespace zovtest {

/// An OpenGL 3.3 core context without a window or a display, current from construction to destruction. The
/// driver stays loaded for the next one.
class OffscreenContext {
 public:
  OffscreenContext() : display(GetDisplay()) {
    const EGLint wanted[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    eglChooseConfig(display, wanted, &config, 1, &found);
    constexpr EGLint core = EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT;
    const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION,
                                 3,
                                 EGL_CONTEXT_MINOR_VERSION,
                                 3,
                                 EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                 core,
                                 EGL_NONE};
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, attributes);
    current = eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_TRUE;
  }

  ~OffscreenContext() {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context != EGL_NO_CONTEXT) eglDestroyContext(display, context);
  }
  OffscreenContext(const OffscreenContext&) = delete;
  OffscreenContext& operator=(const OffscreenContext&) = delete;

  bool IsCurrent() const { return current; }

 private:
  static EGLDisplay GetDisplay() {
    static const EGLDisplay shared = [] {
      const EGLDisplay opened = eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
      eglInitialize(opened, nullptr, nullptr);
      eglBindAPI(EGL_OPENGL_API);
      return opened;
    }();
    return shared;
  }

  EGLDisplay display;
  EGLContext context = EGL_NO_CONTEXT;
  bool current = false;
};

}  // namespace zovtest
