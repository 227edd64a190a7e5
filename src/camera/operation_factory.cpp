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
#include "korvane/operation.h"

namespace Korvane {

namespace {

using Make = std::unique_ptr<Operation> (*)();

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

}  // namespace

std::unique_ptr<Operation> Operation::CreateOperation(OperationType type) {
  for (const Row& row : OPERATIONS) {
    if (row.type == type) return row.make();
  }
  return nullptr;
}

}  // namespace Korvane
