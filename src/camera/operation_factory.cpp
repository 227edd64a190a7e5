#include "camera/operation_factory.h"

#include "camera/dolly_operation.h"
#include "camera/fly_operation.h"
#include "camera/height_operation.h"
#include "camera/look_operation.h"
#include "camera/orbit_operation.h"
#include "camera/pan_operation.h"
#include "camera/roll_operation.h"
#include "camera/slide_operation.h"
#include "camera/zoom2d_operation.h"
#include "camera/zoom_operation.h"
#include "foundation/out_of_memory.h"
#include "korvane/operation.h"

namespace Korvane {

namespace {

using Make = OperationKind::Make;

template <class Kind>
std::unique_ptr<Operation> MakeOperation() {
  return std::make_unique<Kind>();
}

struct Row {
  OperationType type;
  Make make;
};

constexpr Row OPERATIONS[] = {
    {OPERATION_PAN, &MakeOperation<PanOperation>},       {OPERATION_ORBIT, &MakeOperation<OrbitOperation>},
    {OPERATION_LOOK, &MakeOperation<LookOperation>},     {OPERATION_FLY, &MakeOperation<FlyOperation>},
    {OPERATION_DOLLY, &MakeOperation<DollyOperation>},   {OPERATION_ZOOM, &MakeOperation<ZoomOperation>},
    {OPERATION_ZOOM2D, &MakeOperation<Zoom2DOperation>}, {OPERATION_HEIGHT, &MakeOperation<HeightOperation>},
    {OPERATION_SLIDE, &MakeOperation<SlideOperation>},   {OPERATION_ROLL, &MakeOperation<RollOperation>},
};

// By kind, what higher shelves make. Filled before main by whoever holds an OperationKind, so it must need no
// initialisation of its own.
constinit Make registered[OPERATION_KIND_COUNT] = {};

Make FindMake(OperationType type) {
  for (const Row& row : OPERATIONS) {
    if (row.type == type) return row.make;
  }
  return IsOperationKind(type) ? registered[type] : nullptr;
}

}  // namespace

OperationKind::OperationKind(OperationType type, Make make)
    : kind(type), held(make != nullptr && IsOperationKind(type) && FindMake(type) == nullptr) {
  if (held) registered[kind] = make;
}

OperationKind::~OperationKind() {
  if (held) registered[kind] = nullptr;
}

std::unique_ptr<Operation> Operation::CreateOperation(OperationType type) {
  const Make make = FindMake(type);
  return make != nullptr ? OrFail(make) : nullptr;
}

}  // namespace Korvane
