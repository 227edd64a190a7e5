#include "zov/zov_icons.h"

#include <utility>

#include "facade/zov_icons_p.h"
#include "zov/zov_geom_utils.h"

using Korvane::Vector3;
using Utils = zovGeomUtils;

// ---- flat icons ----

zovIcon2D::zovIcon2D(std::unique_ptr<Korvane::Icon2D> owned) : own(std::move(owned)), inner(own.get()) {}
zovIcon2D::zovIcon2D(Korvane::Icon2D& borrowed) : inner(&borrowed) {}
zovIcon2D::~zovIcon2D() = default;

void zovIcon2D::take(std::unique_ptr<Korvane::Icon2D> owned) {
  own = std::move(owned);
  inner.reset(own.get());
}

qmBox2 zovIcon2D::bounds() const { return Utils::kvbox_to_qmbox(inner->GetBounds()); }
void zovIcon2D::set_bounds(const qmBox2& value) { inner->SetBounds(Utils::qmbox_to_kvbox(value)); }
qmPoint2 zovIcon2D::position() const { return Utils::kvvec_to_qmpnt(inner->GetPosition()); }
void zovIcon2D::set_position(const qmPoint2& value) { inner->SetPosition(Utils::qmpnt_to_kvvec(value)); }
void zovIcon2D::move(const qmVector2& offset) { inner->Move(Utils::qmvec_to_kvvec(offset)); }
double zovIcon2D::width() const { return inner->GetWidth(); }
double zovIcon2D::height() const { return inner->GetHeight(); }
void zovIcon2D::set_size(double width, double height) { inner->SetSize(width, height); }
double zovIcon2D::opacity() const { return inner->GetOpacity(); }
void zovIcon2D::set_opacity(double value) { inner->SetOpacity(value); }
bool zovIcon2D::visible() const { return inner->IsVisible(); }
void zovIcon2D::set_visible(bool value) { inner->SetVisible(value); }

namespace {

template <class Inner, class Facade>
Inner& Within(const Facade& icon) {
  return static_cast<Inner&>(icon.korvane());
}

}  // namespace

zovDynamicIcon2D::zovDynamicIcon2D(int id) : zovIcon2D(std::make_unique<zovDynamicIcon2DP>(*this, id)) {}
zovDynamicIcon2D::zovDynamicIcon2D(Korvane::DynamicIcon2D& borrowed) : zovIcon2D(borrowed) {}
zovDynamicIcon2D::~zovDynamicIcon2D() = default;
int zovDynamicIcon2D::id() const { return Within<Korvane::DynamicIcon2D>(*this).GetID(); }
bool zovDynamicIcon2D::flip() const { return Within<Korvane::DynamicIcon2D>(*this).GetFlip(); }
void zovDynamicIcon2D::set_flip(bool value) { Within<Korvane::DynamicIcon2D>(*this).SetFlip(value); }

zovResourceIcon2D::zovResourceIcon2D(zovTextureID id)
    : zovIcon2D(std::make_unique<zovResourceIcon2DP>(*this, static_cast<Korvane::TextureID>(id))) {}
zovResourceIcon2D::zovResourceIcon2D(Korvane::ResourceIcon2D& borrowed) : zovIcon2D(borrowed) {}
zovResourceIcon2D::~zovResourceIcon2D() = default;
zovTextureID zovResourceIcon2D::texture_resource_id() const {
  return static_cast<zovTextureID>(Within<Korvane::ResourceIcon2D>(*this).GetTextureResourceID());
}

zovPixelIcon2D::zovPixelIcon2D(int width, int height, const unsigned char* pixels, zovPixelFormat format)
    : zovIcon2D(std::make_unique<zovPixelIcon2DP>(*this, width, height, pixels,
                                                  static_cast<Korvane::PixelIcon2D::PixelFormat>(format))) {}
zovPixelIcon2D::zovPixelIcon2D(Korvane::PixelIcon2D& borrowed) : zovIcon2D(borrowed) {}
zovPixelIcon2D::~zovPixelIcon2D() = default;

bool zovPixelIcon2D::colour(const qmPoint2& point, float rgb[3]) const {
  Vector3 found;
  if (rgb == nullptr || !Within<Korvane::PixelIcon2D>(*this).GetColor(Utils::qmpnt_to_kvvec(point), found)) {
    return false;
  }
  found.ToArray(rgb);
  return true;
}

int zovPixelIcon2D::image_width() const { return Within<Korvane::PixelIcon2D>(*this).GetImageWidth(); }
int zovPixelIcon2D::image_height() const { return Within<Korvane::PixelIcon2D>(*this).GetImageHeight(); }
const unsigned char* zovPixelIcon2D::image_pixels() const {
  return Within<Korvane::PixelIcon2D>(*this).GetImagePixels();
}
zovPixelFormat zovPixelIcon2D::pixel_format() const {
  return static_cast<zovPixelFormat>(Within<Korvane::PixelIcon2D>(*this).GetPixelFormat());
}

// ---- icons of the scene ----

zovIcon3D::zovIcon3D(std::unique_ptr<Korvane::Icon3D> owned) : own(std::move(owned)), inner(own.get()) {}
zovIcon3D::zovIcon3D(Korvane::Icon3D& borrowed) : inner(&borrowed) {}
zovIcon3D::~zovIcon3D() = default;

void zovIcon3D::take(std::unique_ptr<Korvane::Icon3D> owned) {
  own = std::move(owned);
  inner.reset(own.get());
}

zovMaterialParameters zovIcon3D::material() const { return zovMaterialParameters(inner->GetMaterial()); }
void zovIcon3D::set_material(const zovMaterialParameters& value) { inner->GetMaterial() = value.korvane(); }
qmPoint3 zovIcon3D::position() const { return Utils::kvvec_to_qmpnt(inner->GetPosition()); }
void zovIcon3D::set_position(const qmPoint3& value) { inner->SetPosition(Utils::qmpnt_to_kvvec(value)); }
void zovIcon3D::move(const qmVector3& offset) { inner->Move(Utils::qmvec_to_kvvec(offset)); }
double zovIcon3D::size() const { return inner->GetSize(); }
void zovIcon3D::set_size(double value) { inner->SetSize(value); }
bool zovIcon3D::visible() const { return inner->IsVisible(); }
void zovIcon3D::set_visible(bool value) { inner->SetVisible(value); }

zovResourceIcon3D::zovResourceIcon3D(zovModelID id)
    : zovIcon3D(std::make_unique<zovResourceIcon3DP>(*this, static_cast<Korvane::ModelID>(id))) {}
zovResourceIcon3D::zovResourceIcon3D(Korvane::ResourceIcon3D& borrowed) : zovIcon3D(borrowed) {}
zovResourceIcon3D::~zovResourceIcon3D() = default;
zovModelID zovResourceIcon3D::model_resource_id() const {
  return static_cast<zovModelID>(Within<Korvane::ResourceIcon3D>(*this).GetModelResourceID());
}
