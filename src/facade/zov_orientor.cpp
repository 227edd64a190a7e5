#include "zov/zov_orientor.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <utility>

#include "cube/orientor_parts.h"
#include "facade/zov_camera_operations_p.h"
#include "facade/zov_orientor_observer_p.h"
#include "facade/zov_orientor_p.h"
#include "facade/zov_renderer_p.h"
#include "foundation/out_of_memory.h"
#include "korvane/lifeline.h"
#include "zov/zov_camera_operations.h"
#include "zov/zov_geom_utils.h"
#include "zov/zov_orientor_observer.h"
#include "zov/zov_renderer.h"
#include "zov/zov_string_converter.h"

using Korvane::Orientor;
using Utils = zovGeomUtils;

// ---- inward ----

bool zovOrientorP::Create() { return owner->create(); }
bool zovOrientorP::Destroy() { return owner->destroy(); }
void zovOrientorP::Draw() { owner->draw(); }
bool zovOrientorP::OnMouseMove(int x, int y) { return owner->on_mouse_move(x, y); }
bool zovOrientorP::OnLeftMouseDown(int x, int y) { return owner->on_left_mouse_down(x, y); }
bool zovOrientorP::OnLeftMouseUp(int x, int y) { return owner->on_left_mouse_up(x, y); }
bool zovOrientorP::OpenMenu() { return owner->open_menu(); }
void zovOrientorP::OpenUCSMenu() { owner->open_ucs_menu(); }
void zovOrientorP::GoToHomeView() { owner->go_to_home_view(); }

bool zovOrientorP::ShowsLabelOf(const zovRendererP& maker) {
  const Korvane::CubeLabel& label = GetParts().label;
  return maker.HasLent(label.GetPlain()) || maker.HasLent(label.GetHighlighted());
}

// ---- partners that are taken away ----

// Shared by a pointer that may own nothing: then its end comes when the host wants it, and is learnt here.
template <class Facade, class Inner>
struct Partner {
  std::shared_ptr<Facade> shared;
  Korvane::Borrowed<Inner> within;

  void Set(std::shared_ptr<Facade> value, Inner* of) {
    shared = std::move(value);
    within.Set(of);
  }
  bool IsCallingOut() const { return within.Get() != nullptr && within.Get()->IsCallingOut(); }
};

// With whom the cube works, and before them those that may still be at work.
struct zovOrientor::partners {
  using Hub = Partner<zovCameraOperations, zovCameraOperationsP>;
  using Maker = Partner<zovRenderer, zovRendererP>;

  Hub hub;
  Maker renderer;
  std::list<Hub> former_hubs;
  std::list<Maker> former_renderers;

  bool has_former() const { return !former_hubs.empty() || !former_renderers.empty(); }
  bool are_called() const {
    const auto is_called = [](const auto& each) { return each.IsCallingOut(); };
    return is_called(hub) || is_called(renderer) ||
           std::any_of(former_hubs.begin(), former_hubs.end(), is_called) ||
           std::any_of(former_renderers.begin(), former_renderers.end(), is_called);
  }

  // `place`: for the one that was there until now. It has been made before anything changed.
  template <class Facade, class Inner>
  static void replace(Partner<Facade, Inner>& present, std::list<Partner<Facade, Inner>>& former,
                      std::list<Partner<Facade, Inner>>& place, std::shared_ptr<Facade> value, Inner* of) {
    place.front().Set(std::move(present.shared), present.within.Get());
    former.splice(former.end(), place);
    present.Set(std::move(value), of);
  }
};

// A stretch within which the cube calls out to its partners.
class zovOrientor::working {
 public:
  explicit working(zovOrientor& called) : cube(called) { ++cube.calls; }
  working(const working&) = delete;
  working& operator=(const working&) = delete;
  ~working() {
    if (--cube.calls == 0 && cube.others->has_former()) cube.let_go_of_former();
  }

 private:
  zovOrientor& cube;
};

// Who calls the cube within goes past this class, but not past the partners: while one of them is at work,
// none goes. What goes is told last of all, since its end is the host's, who may call the cube again.
void zovOrientor::let_go_of_former() {
  if (others->are_called()) return;
  const std::list<partners::Hub> hubs = std::move(others->former_hubs);
  others->former_hubs.clear();
  std::list<partners::Maker> renderers;
  for (auto each = others->former_renderers.begin(); each != others->former_renderers.end();) {
    const auto next = std::next(each);
    const zovRendererP* const maker = each->within.Get();
    const bool has_made_the_label =
        maker != nullptr && each->shared != others->renderer.shared && inner->ShowsLabelOf(*maker);
    if (!has_made_the_label) renderers.splice(renderers.end(), others->former_renderers, each);
    each = next;
  }
}

// Ending what the mouse does may tell the host, who may give others.
void zovOrientor::set_camera_operations(std::shared_ptr<zovCameraOperations> operations) {
  const working here(*this);
  std::list<partners::Hub> place(1);
  zovCameraOperationsP* const hub = operations != nullptr ? operations->inner.get() : nullptr;
  inner->SetKorvane(hub);
  partners::replace(others->hub, others->former_hubs, place, std::move(operations), hub);
}

void zovOrientor::set_renderer(std::shared_ptr<zovRenderer> value) {
  const working here(*this);
  std::list<partners::Maker> place(1);
  zovRendererP* const renderer = value != nullptr ? value->inner.get() : nullptr;
  inner->SetRenderer(renderer);
  partners::replace(others->renderer, others->former_renderers, place, std::move(value), renderer);
}

// ---- outside ----

zovOrientor::zovOrientor()
    : others(std::make_unique<partners>()),
      inner(std::make_unique<zovOrientorP>(*this)),
      parameters(std::make_unique<zovOrientorParameters>(inner->GetParameters())) {}
zovOrientor::~zovOrientor() = default;

bool zovOrientor::create() {
  const working here(*this);
  return inner->Orientor::Create();
}
bool zovOrientor::destroy() {
  const working here(*this);
  return inner->Orientor::Destroy();
}
void zovOrientor::draw() {
  const working here(*this);
  inner->Orientor::Draw();
}
bool zovOrientor::on_mouse_move(int x, int y) {
  const working here(*this);
  return inner->Orientor::OnMouseMove(x, y);
}
bool zovOrientor::on_left_mouse_down(int x, int y) {
  const working here(*this);
  return inner->Orientor::OnLeftMouseDown(x, y);
}
bool zovOrientor::on_left_mouse_up(int x, int y) {
  const working here(*this);
  return inner->Orientor::OnLeftMouseUp(x, y);
}
bool zovOrientor::open_menu() {
  const working here(*this);
  return inner->Orientor::OpenMenu();
}
void zovOrientor::open_ucs_menu() {
  const working here(*this);
  inner->Orientor::OpenUCSMenu();
}
void zovOrientor::go_to_home_view() {
  const working here(*this);
  inner->Orientor::GoToHomeView();
}

// A pointer that shares the same observer in another way may be the one that owns it, so each is kept.
bool zovOrientor::add_observer(const std::shared_ptr<zovOrientorObserver>& observer) {
  if (observer == nullptr) return false;
  const auto is_shared_alike = [&](const auto& each) {
    return each == observer && !each.owner_before(observer) && !observer.owner_before(each);
  };
  const bool is_known = std::any_of(observers.begin(), observers.end(), is_shared_alike);
  return Korvane::OrFail([&] {
    std::list<std::shared_ptr<zovOrientorObserver>> place(is_known ? 0 : 1, observer);
    observer->inner->BeToldBy(*inner);
    if (!inner->AddObserver(observer->inner.get())) return false;
    observers.splice(observers.end(), place);
    return true;
  });
}

void zovOrientor::remove_observer(const std::shared_ptr<zovOrientorObserver>& observer) {
  std::list<std::shared_ptr<zovOrientorObserver>> leaving = take_out(observer.get());
  if (leaving.empty()) return;
  zovOrientorObserverP& within = *leaving.front()->inner;
  inner->RemoveObserver(&within);
  within.KeepWhileTold(leaving);
}

void zovOrientor::forget(const zovOrientorObserver* gone) { take_out(gone); }

// Out of the list before they end: their end is the host's, who may change the list in it.
std::list<std::shared_ptr<zovOrientorObserver>> zovOrientor::take_out(const zovOrientorObserver* observer) {
  std::list<std::shared_ptr<zovOrientorObserver>> taken;
  for (auto each = observers.begin(); each != observers.end();) {
    const auto next = std::next(each);
    if (each->get() == observer) taken.splice(taken.end(), observers, each);
    each = next;
  }
  return taken;
}

zovOrientorParameters& zovOrientor::get_parameters() { return *parameters; }
const zovOrientorParameters& zovOrientor::get_parameters() const { return *parameters; }

void zovOrientor::set_viewport_size(int width, int height) {
  const working here(*this);
  inner->SetViewportSize(width, height);
}
void zovOrientor::set_viewport_mouse_position(int x, int y) {
  const working here(*this);
  inner->SetViewportMousePosition(x, y);
}
int zovOrientor::get_screen_size() const { return inner->GetScreenSize(); }
void zovOrientor::get_region_size(int& width, int& height) const { inner->GetRegionSize(width, height); }
bool zovOrientor::is_point_in_bounds(int x, int y) {
  const working here(*this);
  return inner->IsPointInBounds(x, y);
}

int zovOrientor::get_active_geometry_part() const { return inner->GetActiveGeometryPart(); }
int zovOrientor::get_active_overlay_part() const { return inner->GetActiveOverlayPart(); }
qmVector3 zovOrientor::get_active_part_direction() const {
  return Utils::kvvec_to_qmvec(inner->GetActivePartDirection());
}
qmString zovOrientor::get_active_part_name() const {
  return Korvane::OrFail([&] { return qmString(inner->GetActivePartName(), qmStringUTF8); });
}
qmString zovOrientor::get_tooltip() const {
  return Korvane::OrFail([&] { return zovStringConverter::to_qmString(inner->GetTooltip()); });
}
bool zovOrientor::is_drag_active() const { return inner->IsDragActive(); }
bool zovOrientor::is_mouse_in_region() const { return inner->IsMouseInRegion(); }
bool zovOrientor::is_mouse_on_geometry_part() const { return inner->IsMouseOnGeometryPart(); }
bool zovOrientor::is_mouse_on_compass_part() const { return inner->IsMouseOnCompassPart(); }
bool zovOrientor::is_mouse_on_overlay_part() const { return inner->IsMouseOnOverlayPart(); }
bool zovOrientor::is_mouse_on_viewable_overlay_part() const { return inner->IsMouseOnViewableOverlayPart(); }
bool zovOrientor::is_mouse_on_context_menu_part() const { return inner->IsMouseOnContextMenuPart(); }
bool zovOrientor::is_mouse_on_ucs_menu() const { return inner->IsMouseOnUCSMenu(); }
bool zovOrientor::is_mouse_on_part() const { return inner->IsMouseOnPart(); }

int zovOrientor::get_closest_geometry_part() const { return inner->GetClosestGeometryPart(); }
qmVector3 zovOrientor::get_closest_view_direction() const {
  return Utils::kvvec_to_qmvec(inner->GetClosestViewDirection());
}
qmVector3 zovOrientor::get_geometry_part_direction(int part) const {
  return Utils::kvvec_to_qmvec(inner->GetGeometryPartDirection(part));
}
int zovOrientor::get_geometry_part_index(const qmVector3& direction) const {
  return inner->GetGeometryPartIndex(Utils::qmvec_to_kvvec(direction));
}
bool zovOrientor::view_on_part_axis() const { return inner->ViewOnPartAxis(); }
bool zovOrientor::view_on_principal_axis() const { return inner->ViewOnPrincipalAxis(); }

void zovOrientor::align_to_orbit_up_direction() {
  const working here(*this);
  inner->AlignToOrbitUpDirection();
}
void zovOrientor::inject_click(zovOrientorPart part) {
  const working here(*this);
  inner->InjectClick(part);
}
void zovOrientor::lock_to_current_selection(bool toggle) {
  const working here(*this);
  inner->LockToCurrentSelection(toggle);
}

Orientor& zovOrientor::korvane() { return *inner; }
const Orientor& zovOrientor::korvane() const { return *inner; }
