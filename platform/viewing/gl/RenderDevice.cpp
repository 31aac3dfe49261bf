#include "RenderDevice.h"

namespace kiv {

namespace {

std::weak_ptr<CRenderDevice>& shared()
{
    static std::weak_ptr<CRenderDevice> device;
    return device;
}

}  // namespace

QSurfaceFormat CRenderDevice::WantedFormat()
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(2, 1);
    format.setProfile(QSurfaceFormat::NoProfile);
    format.setDepthBufferSize(24);
    format.setSwapInterval(0);  // several viewers must not wait for the screen one after the other
    return format;
}

std::shared_ptr<CRenderDevice> CRenderDevice::Shared()
{
    std::shared_ptr<CRenderDevice> device = shared().lock();
    if (!device) {
        device.reset(new CRenderDevice);
        shared() = device;
    }
    return device;
}

std::shared_ptr<CRenderDevice> CRenderDevice::Existing()
{
    return shared().lock();
}

CRenderDevice::CRenderDevice()
{
    create();
}

CRenderDevice::~CRenderDevice()
{
    const CCurrent current(*this);
    m_skies.reset();
    m_programs.reset();
    m_meshes.reset();
    m_textures.reset();
}

void CRenderDevice::create()
{
    if (!createContext()) {
        m_refusal = "there is no OpenGL here";
        return;
    }
    const CCurrent current(*this);
    if (!current) {
        m_refusal = m_trouble;
        return;
    }
    if (!isCapable())
        return;
    m_textures = std::make_unique<CTextureStore>(*this);
    m_meshes = std::make_unique<CMeshStore>(*this);
    m_programs = std::make_unique<CProgramStore>();
    m_skies = std::make_unique<CSkyStore>(*this);
}

bool CRenderDevice::createContext()
{
    m_surface.setFormat(WantedFormat());
    m_surface.create();
    m_context = std::make_unique<QOpenGLContext>();
    m_context->setFormat(WantedFormat());
    return m_surface.isValid() && m_context->create();
}

bool CRenderDevice::isCapable()
{
    const QSurfaceFormat format = m_context->format();
    const bool has3 = format.majorVersion() >= 3;
    if (m_context->isOpenGLES() || (!has3 && !m_context->hasExtension("GL_ARB_shader_texture_lod"))) {
        m_refusal = "OpenGL " + std::to_string(format.majorVersion()) + "." + std::to_string(format.minorVersion()) +
                    " of this machine is too old to draw materials";
        return false;
    }
    GetFunctions().glGetIntegerv(GL_MAX_TEXTURE_SIZE, &m_maxTextureSize);
    GetFunctions().glGetIntegerv(GL_MAX_CUBE_MAP_TEXTURE_SIZE, &m_maxCubeSide);
    return true;
}

// ---- the context, as long as it can be used

bool CRenderDevice::makeCurrent(QSurface* surface)
{
    return m_context->makeCurrent(surface) ||
           (!m_context->isValid() && !IsCurrent() && renew() && m_context->makeCurrent(surface));
}

// What lay in the lost context went with it.
bool CRenderDevice::renew()
{
    if (!m_textures)
        return false;  // it never could
    m_skies->Release();
    m_programs->Release();
    m_meshes->Release();
    m_textures->Release();
    return createContext();
}

CRenderDevice::CCurrent::CCurrent(CRenderDevice& device, QSurface* surface)
    : m_device(device), m_before(QOpenGLContext::currentContext()),
      m_surfaceBefore(m_before ? m_before->surface() : nullptr), m_surface(surface)
{
    if (!m_surface)  // within a drawing, the window that is drawn
        m_surface = device.IsCurrent() ? m_surfaceBefore : &device.m_surface;
    m_current = device.makeCurrent(m_surface);
    if (m_current)
        device.m_trouble.clear();
    else if (!surface)
        device.m_trouble = "the OpenGL context cannot be used";
}

CRenderDevice::CCurrent::~CCurrent()
{
    const QOpenGLContext* now = QOpenGLContext::currentContext();
    if (m_before == now && (!now || now->surface() == m_surfaceBefore))
        return;
    if (m_before)
        m_before->makeCurrent(m_surfaceBefore);
    else if (m_current)
        m_device.m_context->doneCurrent();
}

// ---- listeners

int CRenderDevice::AddListener(std::function<void()> listener)
{
    m_listeners[m_nextListener] = std::move(listener);
    return m_nextListener++;
}

void CRenderDevice::RemoveListener(int key)
{
    m_listeners.erase(key);
}

void CRenderDevice::TellListeners()
{
    const auto tell = [this] {
        for (const auto& listener : m_listeners)
            listener.second();
    };
    QMetaObject::invokeMethod(&m_receiver, tell, Qt::QueuedConnection);
}

}  // namespace kiv
