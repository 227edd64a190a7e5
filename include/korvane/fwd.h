#pragma once

namespace Korvane {

// The names of this folder, for headers of a host that only pass them on by pointer or reference.

class ApplicationParameters;
class AspectRatioAdjuster;
class Box3;
class Cam3DController;
class Cam3DControllerObserver;
class Cam3DControllerParameters;
class CameraOperations;
class CenterTool;
class ChangingInTimeBox2;
class ChangingInTimeValue;
class ChangingInTimeValueChain;
class ChangingInTimeVector2;
class DynamicIcon2D;
class HelmDisc;
class HelmDiscObserver;
class HelmDiscParameters;
class Icon2D;
class Icon3D;
class IntervalTimer;
class LookAtTool;
class LookMoveTool;
class LookTool;
class MouseWheelZoomTool;
class NavigationBar;
class NavigationBarObserver;
class Operation;
class OperationObserver;
class OrbitTool;
class Orientor;
class OrientorObserver;
class PanTool;
class PivotBall;
class PixelIcon2D;
class Plane3D;
class Platform;
class Quaternion;
class RectZoomTool;
class RegionListener;
class Renderer;
class ResourceIcon2D;
class ResourceIcon3D;
class RewindHistory;
class RewindHistoryObserver;
class Sequence;
class Shot;
class ShotEditor;
class ShotObserver;
class ShotSpecification;
class Story;
class Storyboard;
class StoryboardObserver;
class Timer;
class TimerQueue;
class Tool;
class Toolbar;
class ToolbarItem;
class ToolbarObserver;
class TrackMenu;
class UndoCommand;
class UndoQueue;
class ViewManager;
class WalkRecorder;
class WalkTool;
class ZoomTool;

struct Box2;
struct CameraParameters;
struct CenterShotParameters;
struct ClosestViewAlignShotParameters;
struct ColorRGBA;
struct CraneShotParameters;
struct KeyframeShotParameters;
struct LookAtShotParameters;
struct LookShotParameters;
struct OrbitShotParameters;
struct OrientorParameters;
struct PanZoomShotParameters;
struct ProjectionTransitionShotParameters;
struct Ray;
struct SpinShotParameters;
struct TrackShotParameters;
struct TransitionShotParameters;
struct Vector2;
struct Vector3;
struct ViewAlignShotParameters;
struct ZoomRectShotParameters;
struct ZoomShotParameters;

enum Cam3DControllerKeyID : int;
enum CursorID : int;
enum InterpolationMethod : int;
enum KeyID : int;
enum MenuID : int;
enum ModelID : int;
enum OperationType : int;
enum StringID : int;
enum TargetCamPos : int;
enum TextureID : int;
enum class DiscType : int;

}  // namespace Korvane
