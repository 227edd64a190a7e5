"""Folders of the core and rooms of the host kit stand on shelves: a file includes from its own and from
lower ones, or from those that it is told to see.

The core includes nothing but the standard library and its own headers. Widgets stand side by side: their
sources may include the public header of a neighbour, their headers only declare it. The host kit sees of the
core what is public, and each of its rooms has the libraries that it is made with; programs see what is public
of both.
"""
import pathlib
import re
import sys

SHELVES = {
    "foundation": 0,
    "camera": 1,
    "shots": 2,
    "render": 2,
    "story/history": 3,
    "interaction/tools": 4,
    "cube": 5,
    "disc": 5,
    "story": 5,
    "toolbar": 5,
    "controller": 5,
    "interaction/view_manager": 6,
    "facade": 7,
}
WIDGETS = {"cube", "disc", "story", "toolbar", "controller"}

# Public headers, by module. What several shelves share as plain numbers and records, and the small classes
# through which lower shelves meet a higher one, stand on the lowest shelf that needs them.
PUBLIC = {
    "foundation": """export fwd math vector2 vector3 quaternion box2 box3 ray plane3d color_rgba platform timer
        interval_timer changing_in_time aspect_ratio_adjuster observer_list observer_set owned_list
        lifeline running resource_ids cam3d_controller_parameters orientor_parameters""",
    "camera": """camera_parameters application_parameters fit_margins operation camera_operations shot shot_parameters
        borrowed_settings shot_watch""",
    "render": "renderer renderer_loans icon2d pixel_icon2d icon3d",
    "story/history": "rewind_history rewind_record",
    "interaction/tools": """pivot_ball tool orbit_tool pan_tool zoom_tool mouse_wheel_zoom_tool rect_zoom_tool
        look_tool look_move_tool look_at_tool center_tool walk_tool""",
    "cube": "orientor orientor_observer",
    "disc": "track_menu region_listener helm_disc helm_disc_parameters helm_disc_observer",
    "story": """story shot_specification undo_queue storyboard storyboard_observer shot_editor
        walk_recorder""",
    "toolbar": "toolbar_item toolbar toolbar_observer navigation_bar navigation_bar_observer",
    "controller": "cam3d_controller cam3d_controller_observer",
    "interaction/view_manager": "view_manager",
}
MODULE_OF_HEADER = {f"korvane/{name}.h": module for module, names in PUBLIC.items() for name in names.split()}

# The host kit: each room, and which of those above it in this table it sees.
ROOMS = {room: names.split() for room, names in {
    "files": "",
    "texts": "",
    "stories": "files texts",
    "views": "files texts stories",
    "projection": "",
    "images": "",
    "scene": "projection images",
    "hub": "projection scene",
    "gl": "images",
    "pictures": "texts images",
    "picture_files": "files texts images",
    "widget_renderer": "texts projection images scene gl pictures",
    "scene_view": "projection images scene gl",
    "window": "images texts",
    "input": "window",
    "focus": "texts images pictures window input",
    "devices": "",
    "bars": "",
    "cube": "",
    "panels": "texts devices focus window",
    "dialogs": "",
}.items()}
ROOM_OF_HEADER = {f"zovhost/{name}.h": room for room, names in {
    "projection": "projection",
    "files": "whole_file",
    "texts": "languages phrases typefaces wide_text",
    "stories": "story_file",
    "views": "bcf_file bcf_viewpoint named_views named_views_file",
    "images": "accent image read_image",
    "scene": "scene",
    "hub": "pivot_policy start_camera view_hub",
    "gl": "gl_state_guard offscreen_target",
    "pictures": "resource_pack host_pictures host_texts",
    "picture_files": "picture",
    "widget_renderer": "gl_renderer",
    "scene_view": "gl_scene_view scene_ground",
    "window": "gui panel_icons panel_texts text_field window",
    "input": """click_watch held_keys key_table navigation_style pointer_wrap touch_camera touch_gestures touch_navigation
        wheel_counter window_view_manager""",
    "focus": "keyboard_focus view_focus",
    "devices": "six_axis_settings six_axis_source six_axis_hand spnav_source game_controller_source",
    "cube": "cube_dress",
    "bars": "disc_tooltips navigation_bar_host toolbar_dress tooltip_note",
    "panels": "menu_keys page_edges page_keys panel_tip shot_editor_panel six_axis_panel",
    "dialogs": "file_dialog",
}.items() for name in names.split()}
# What a room may know beside the standard library, by how the name of a header begins.
FOREIGN = {room: tuple(names.split()) for room, names in {
    "texts": "fribidi.h",
    "stories": "nlohmann/",
    "views": "pugixml.hpp zip.h",
    "images": "gdk-pixbuf/",
    "scene": "assimp/ embree3/ linux/ sys/ fcntl.h malloc.h poll.h signal.h unistd.h",
    "gl": "epoxy/",
    "pictures": "cairo.h librsvg/ pango/",
    "picture_files": "pango/ png.h webp/",
    "widget_renderer": "epoxy/",
    "scene_view": "epoxy/",
    "window": "SDL X11/ backends/ fontconfig/ ft2build.h imgui",
    "panels": "imgui",
    "dialogs": "gio/ libportal/",
    "input": "SDL_keycode.h",
    "focus": "SDL_keycode.h",
    "devices": "SDL spnav.h sys/ fcntl.h poll.h unistd.h",
}.items()}
PROGRAMS = ("host/sheets", "apps", "examples")
# Of the viewer, lowest first: a room knows those before it.
VIEWER = "apps/zovview/"
VIEWER_ROOMS = "files views stories commands viewport settings recordings panel tour viewer".split()

UMBRELLAS = {"include/korvane/korvane.h", "include/zov/zovtools.h"}
WINDOWS = re.compile(r"src/foundation/windows_\w+\.(h|cpp)$")

INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]', re.MULTILINE)
STANDARD = re.compile(r"[a-z_]+\d?$")  # no folder and no extension


def module_of(name):
    """The module of an included name such as korvane/ray.h or camera/view_size.h; None when unknown."""
    if name.startswith("zov/"):
        return "facade"
    folders = name.split("/")[:-1]
    rooms = ("/".join(folders[:depth]) for depth in range(len(folders), 0, -1))
    return MODULE_OF_HEADER.get(name) or next((room for room in rooms if room in SHELVES), None)


def may_include(path, own, name, other):
    if own == other or SHELVES[other] < SHELVES[own]:
        return True
    public_neighbour = name.startswith("korvane/") and path.endswith(".cpp")
    return own in WIDGETS and other in WIDGETS and public_neighbour


def faults_of(root, path):
    own = module_of(path.removeprefix("include/").removeprefix("src/"))
    if own is None:
        yield f"{path}: not known to any shelf; add it to scripts/check_layers.py"
        return
    for bracket, name in INCLUDE.findall((root / path).read_text()):
        if bracket == "<":
            if not STANDARD.match(name) and not (name == "windows.h" and WINDOWS.match(path)):
                yield f"{path}: <{name}> is no header of the standard library"
        elif not any((root / folder / name).is_file() for folder in ("include", "src")):
            yield f"{path}: {name} is no header of the library"
        elif f"include/{name}" in UMBRELLAS:
            yield f"{path}: includes everything through {name}"
        elif path.startswith("include/") and not (root / "include" / name).is_file():
            yield f"{path}: a public header includes the internal {name}"
        elif not may_include(path, own, name, module_of(name) or "facade"):
            yield f"{path}: {own} includes {name} of {module_of(name)}"


def room_of(name):
    """The room of zovhost/scene.h or scene/ray_index.h; None when unknown."""
    return ROOM_OF_HEADER.get(name) or (name.split("/")[0] if name.split("/")[0] in ROOMS else None)


def is_public(root, name):
    return any((root / folder / name).is_file() for folder in ("include", "host/include"))


def host_faults_of(root, path):
    own = room_of(path.removeprefix("host/include/").removeprefix("host/src/"))
    if own is None:
        yield f"{path}: not known to any room of the host kit; add it to scripts/check_layers.py"
        return
    for bracket, name in INCLUDE.findall((root / path).read_text()):
        if bracket == "<":
            if not STANDARD.match(name) and not name.startswith(FOREIGN.get(own, ("no such name",))):
                yield f"{path}: {own} includes <{name}>"
        elif (root / "include" / name).is_file():
            if f"include/{name}" in UMBRELLAS:
                yield f"{path}: includes everything through {name}"
        elif path.startswith("host/include/") and not is_public(root, name):
            yield f"{path}: a public header includes the internal {name}"
        elif room_of(name) is None or not is_public(root, name) and not (root / "host/src" / name).is_file():
            yield f"{path}: {name} is no header of the host kit and no public one of the library"
        elif room_of(name) != own and room_of(name) not in ROOMS[own]:
            yield f"{path}: {own} includes {name} of {room_of(name)}"


def program_faults_of(root, path):
    """A program includes what is public, and what is its own."""
    base = VIEWER if path.startswith(VIEWER) else f"{pathlib.PurePath(path).parent}/"
    own = viewer_floor(path.removeprefix(VIEWER))
    for bracket, name in INCLUDE.findall((root / path).read_text()):
        if bracket == "<" or is_public(root, name):
            continue
        if not (root / base / name).is_file():
            yield f"{path}: {name} is neither public nor its own"
        elif base == VIEWER and viewer_floor(name) > own:
            yield f"{path}: {name} is of a higher room"


def viewer_floor(name):
    """Where a source of the viewer lies: the number of its room, or above all rooms."""
    room = name.split("/")[0]
    return VIEWER_ROOMS.index(room) if room in VIEWER_ROOMS else len(VIEWER_ROOMS)


def umbrella_faults_of(root, umbrella):
    """An umbrella includes every header of its folder."""
    names = {name for _, name in INCLUDE.findall((root / umbrella).read_text())}
    for path in sources_in(root, pathlib.PurePath(umbrella).parent):
        if path != umbrella and path.removeprefix("include/") not in names:
            yield f"{umbrella}: does not include {path}"


def sources_in(root, folder):
    return [path.relative_to(root).as_posix() for path in sorted((root / folder).rglob("*"))
            if path.suffix in (".h", ".cpp")]


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    faults = [fault for folder in ("include", "src") for path in sources_in(root, folder)
              if path not in UMBRELLAS for fault in faults_of(root, path)]
    faults += [fault for folder in ("host/include", "host/src") for path in sources_in(root, folder)
               for fault in host_faults_of(root, path)]
    faults += [fault for folder in PROGRAMS for path in sources_in(root, folder)
               for fault in program_faults_of(root, path)]
    faults += [fault for umbrella in sorted(UMBRELLAS) for fault in umbrella_faults_of(root, umbrella)]
    faults += [f"the table of rooms: {room} sees {seen} below it" for place, room in enumerate(ROOMS)
               for seen in ROOMS[room] if seen not in list(ROOMS)[:place]]
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
