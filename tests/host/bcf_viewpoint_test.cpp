// Viewpoints that are written and read again, each rule of their schema, and files that were made to harm.
#include "zovhost/bcf_viewpoint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>

#include "korvane/math.h"
#include "support/random.h"
#include "zovhost/named_views.h"
#include "zovhost/start_camera.h"

namespace {

using Korvane::CameraParameters;
using Korvane::Math;
using Korvane::Vector3;
using zovhost::BcfViewpoint;
using zovhost::CameraFromBcf;
using zovhost::CameraToBcf;
using zovhost::FormatBcfViewpoint;
using zovhost::ModelAxes;
using zovhost::ParseBcfViewpoint;
using Camera = BcfViewpoint::Camera;

constexpr const char* GUID = "0f4c2b6a-8d1e-4f37-9a52-6c3b1d7e8f90";
constexpr double ULP = std::numeric_limits<double>::epsilon();

// ---- texts by hand ----

std::string VectorText(const std::string& name, const std::string& x, const std::string& y,
                       const std::string& z) {
  return "<" + name + "><X>" + x + "</X><Y>" + y + "</Y><Z>" + z + "</Z></" + name + ">";
}
const std::string POINT = VectorText("CameraViewPoint", "1", "-2.5", "3e1");
const std::string DIRECTION = VectorText("CameraDirection", "0", "1", "0");
const std::string UP = VectorText("CameraUpVector", "0", "0", "1");
const std::string ANGLE = "<FieldOfView>60</FieldOfView>";
const std::string SCALE = "<ViewToWorldScale>12.5</ViewToWorldScale>";
const std::string ASPECT = "<AspectRatio>1.5</AspectRatio>";

std::string Element(const std::string& name, const std::string& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}
std::string InRoot(const std::string& content,
                   const std::string& attributes = std::string(" Guid=\"") + GUID + "\"") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<VisualizationInfo" + attributes + ">" + content +
         "</VisualizationInfo>\n";
}
std::string Perspective(const std::string& lens = ANGLE) {
  return Element("PerspectiveCamera", POINT + DIRECTION + UP + lens);
}
std::string Orthogonal(const std::string& lens = SCALE) {
  return Element("OrthogonalCamera", POINT + DIRECTION + UP + lens);
}

BcfViewpoint ParseWhole(const std::string& xml) {
  BcfViewpoint viewpoint;
  std::string error;
  EXPECT_TRUE(ParseBcfViewpoint(xml, viewpoint, error)) << error << "\n" << xml;
  return viewpoint;
}

std::string FormatWhole(const BcfViewpoint& viewpoint) {
  std::string xml;
  std::string error;
  EXPECT_TRUE(FormatBcfViewpoint(viewpoint, xml, error)) << error;
  return xml;
}

bool IsSame(const BcfViewpoint& a, const BcfViewpoint& b) {
  return a.guid == b.guid && a.camera == b.camera && a.cameraViewPoint == b.cameraViewPoint &&
         a.cameraDirection == b.cameraDirection && a.cameraUpVector == b.cameraUpVector &&
         a.fieldOfView == b.fieldOfView && a.viewToWorldScale == b.viewToWorldScale &&
         a.aspectRatio == b.aspectRatio;
}

void ExpectSame(const BcfViewpoint& a, const BcfViewpoint& b) { EXPECT_TRUE(IsSame(a, b)); }

// ---- what is read ----

TEST(BcfViewpointTest, a_perspective_of_version_2_1_is_read) {
  const BcfViewpoint read = ParseWhole(InRoot(Perspective()));
  EXPECT_EQ(read.guid, GUID);
  EXPECT_EQ(read.camera, Camera::Perspective);
  EXPECT_EQ(read.cameraViewPoint, Vector3(1, -2.5, 30));
  EXPECT_EQ(read.cameraDirection, Vector3(0, 1, 0));
  EXPECT_EQ(read.cameraUpVector, Vector3(0, 0, 1));
  EXPECT_EQ(read.fieldOfView, 60.0);
  EXPECT_EQ(read.aspectRatio, 0.0);
}

TEST(BcfViewpointTest, an_orthogonal_one_of_version_3_0_is_read) {
  const BcfViewpoint read = ParseWhole(InRoot(Orthogonal(SCALE + ASPECT)));
  EXPECT_EQ(read.camera, Camera::Orthogonal);
  EXPECT_EQ(read.viewToWorldScale, 12.5);
  EXPECT_EQ(read.aspectRatio, 1.5);
}

TEST(BcfViewpointTest, version_2_0_has_no_identifier) {
  EXPECT_EQ(ParseWhole(InRoot(Perspective(), "")).guid, "");
}

TEST(BcfViewpointTest, of_both_cameras_of_version_2_the_perspective_counts) {
  EXPECT_EQ(ParseWhole(InRoot(Orthogonal() + Perspective())).camera, Camera::Perspective);
}

TEST(BcfViewpointTest, one_of_components_alone_has_no_camera) {
  EXPECT_EQ(ParseWhole(InRoot("<Components/>")).camera, Camera::None);
  EXPECT_EQ(ParseWhole(InRoot("")).camera, Camera::None);
}

TEST(BcfViewpointTest, what_stands_around_the_camera_is_passed_over) {
  const std::string components =
      "<Components><Selection><Component IfcGuid=\"2O2Fr$t4X7Zf8NOew3FNr2\"/></Selection>"
      "<Visibility DefaultVisibility=\"true\"/></Components>";
  const std::string lines = "<Lines><Line>" + VectorText("StartPoint", "0", "0", "0") +
                            VectorText("EndPoint", "1", "1", "1") + "</Line></Lines>";
  const std::string planes = "<ClippingPlanes><ClippingPlane>" + VectorText("Location", "0", "0", "0") +
                             VectorText("Direction", "0", "0", "-1") + "</ClippingPlane></ClippingPlanes>";
  const BcfViewpoint plain = ParseWhole(InRoot(Perspective()));
  for (const char* const bitmaps :
       {"", "<Bitmap><Bitmap>PNG</Bitmap></Bitmap><Bitmap/>", "<Bitmaps><Bitmap/></Bitmaps>"}) {
    std::string content = components + Perspective() + lines;
    content.append(planes).append(bitmaps);
    ExpectSame(ParseWhole(InRoot(content)), plain);
  }
}

TEST(BcfViewpointTest, comments_blanks_namespaces_and_attributes_of_xml_do_no_harm) {
  const BcfViewpoint plain = ParseWhole(InRoot(Perspective()));
  const std::string attributes = std::string(" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"") +
                                 " xsi:noNamespaceSchemaLocation=\"visinfo.xsd\" xmlns=\"any\" Guid=\"" +
                                 GUID + "\"";
  ExpectSame(ParseWhole(InRoot("\n <!-- a view -->\n<?note?>" + Perspective() + "\n", attributes)), plain);
  ExpectSame(ParseWhole("<?xml version=\"1.0\"?><b:VisualizationInfo Guid=\"" + std::string(GUID) +
                        "\" xmlns:b=\"any\"><b:PerspectiveCamera>" + POINT + DIRECTION + UP + ANGLE +
                        "</b:PerspectiveCamera></b:VisualizationInfo>"),
             plain);
  ExpectSame(ParseWhole("\xEF\xBB\xBF" + InRoot(Perspective())), plain);
}

TEST(BcfViewpointTest, capital_digits_of_an_identifier_become_small_ones) {
  EXPECT_EQ(ParseWhole(InRoot(Perspective(), " Guid=\"0F4C2B6A-8D1E-4F37-9A52-6C3B1D7E8F90\"")).guid, GUID);
}

TEST(BcfViewpointTest, an_angle_beyond_those_of_version_2_is_taken) {
  EXPECT_EQ(ParseWhole(InRoot(Perspective("<FieldOfView>35</FieldOfView>"))).fieldOfView, 35.0);
  EXPECT_EQ(ParseWhole(InRoot(Perspective("<FieldOfView> +1.2E2\n</FieldOfView>"))).fieldOfView, 120.0);
}

// ---- the rules, each violated once ----

struct BrokenRule {
  const char* name;
  std::string xml;
  const char* error;  // all of it
};
void PrintTo(const BrokenRule& rule, std::ostream* out) { *out << rule.name; }
class BrokenViewpoint : public testing::TestWithParam<BrokenRule> {};

TEST_P(BrokenViewpoint, is_refused_in_one_line) {
  BcfViewpoint viewpoint;
  viewpoint.guid = "before";
  std::string error;
  EXPECT_FALSE(ParseBcfViewpoint(GetParam().xml, viewpoint, error));
  EXPECT_EQ(error, GetParam().error);
  EXPECT_EQ(viewpoint.guid, "before");
}

std::string NameOf(const testing::TestParamInfo<BrokenRule>& row) { return row.param.name; }

std::string WithAngle(const std::string& text) {
  return InRoot(Perspective("<FieldOfView>" + text + "</FieldOfView>"));
}
std::string WithScale(const std::string& text) {
  return InRoot(Orthogonal("<ViewToWorldScale>" + text + "</ViewToWorldScale>"));
}
std::string WithAspect(const std::string& text) {
  return InRoot(Orthogonal(SCALE + "<AspectRatio>" + text + "</AspectRatio>"));
}
std::string WithVectors(const std::string& vectors) {
  return InRoot(Element("PerspectiveCamera", vectors + ANGLE));
}

INSTANTIATE_TEST_SUITE_P(
    of_the_root, BrokenViewpoint,
    testing::Values(
        BrokenRule{"of_another_name", "<Markup/>", "it is no viewpoint, but \"Markup\""},
        BrokenRule{"a_guid_too_short", InRoot(Perspective(), " Guid=\"0f4c2b6a\""),
                   "VisualizationInfo.Guid: it is no identifier"},
        BrokenRule{"a_guid_of_other_letters",
                   InRoot(Perspective(), " Guid=\"0g4c2b6a-8d1e-4f37-9a52-6c3b1d7e8f90\""),
                   "VisualizationInfo.Guid: it is no identifier"},
        BrokenRule{"a_guid_in_braces",
                   InRoot(Perspective(), " Guid=\"{0f4c2b6a-8d1e-4f37-9a52-6c3b1d7e8f9}\""),
                   "VisualizationInfo.Guid: it is no identifier"},
        BrokenRule{"version_3_without_a_guid", InRoot(Perspective(ANGLE + ASPECT), ""),
                   "VisualizationInfo.Guid: it is missing"},
        BrokenRule{"another_attribute", InRoot(Perspective(), " Name=\"x\""),
                   "VisualizationInfo: the attribute \"Name\" does not belong there"},
        BrokenRule{"a_guid_twice", InRoot(Perspective(), " Guid=\"a\" Guid=\"b\""),
                   "VisualizationInfo: the attribute \"Guid\" stands there twice"},
        BrokenRule{"another_element", InRoot(Perspective() + "<Author/>"),
                   "VisualizationInfo: \"Author\" does not belong there"},
        BrokenRule{"two_cameras_of_a_kind", InRoot(Perspective() + Perspective()),
                   "VisualizationInfo.PerspectiveCamera: there are too many"},
        BrokenRule{"both_cameras_of_version_3",
                   InRoot(Orthogonal(SCALE + ASPECT) + Perspective(ANGLE + ASPECT)),
                   "VisualizationInfo: there are two cameras"},
        BrokenRule{"cameras_in_the_other_order", InRoot(Perspective() + Orthogonal()),
                   "VisualizationInfo: \"OrthogonalCamera\" is not in its place"},
        BrokenRule{"components_behind_the_camera", InRoot(Perspective() + "<Components/>"),
                   "VisualizationInfo: \"Components\" is not in its place"},
        BrokenRule{"a_line_without_an_end",
                   InRoot("<Lines><Line>" + VectorText("StartPoint", "0", "0", "0") + "</Line></Lines>"),
                   "VisualizationInfo.Lines.Line.EndPoint: it is missing"},
        BrokenRule{
            "a_plane_without_a_location",
            InRoot("<ClippingPlanes><ClippingPlane>" + VectorText("Direction", "0", "0", "1") +
                   "</ClippingPlane></ClippingPlanes>"),
            "VisualizationInfo.ClippingPlanes.ClippingPlane.Location: it is missing, or not in its place"},
        BrokenRule{"text_between", InRoot("words" + Perspective()),
                   "VisualizationInfo: there is text where none belongs"}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    of_the_camera, BrokenViewpoint,
    testing::Values(
        BrokenRule{"without_a_view_point", WithVectors(DIRECTION + UP),
                   "VisualizationInfo.PerspectiveCamera.CameraViewPoint: it is missing, or not in its place"},
        BrokenRule{"without_a_direction", WithVectors(POINT + UP),
                   "VisualizationInfo.PerspectiveCamera.CameraDirection: it is missing, or not in its place"},
        BrokenRule{"without_an_up_vector", WithVectors(POINT + DIRECTION),
                   "VisualizationInfo.PerspectiveCamera.CameraUpVector: it is missing, or not in its place"},
        BrokenRule{"without_an_angle", InRoot(Perspective("")),
                   "VisualizationInfo.PerspectiveCamera.FieldOfView: it is missing"},
        BrokenRule{"without_a_scale", InRoot(Orthogonal("")),
                   "VisualizationInfo.OrthogonalCamera.ViewToWorldScale: it is missing"},
        BrokenRule{"with_the_scale_of_the_other", InRoot(Perspective(SCALE)),
                   "VisualizationInfo.PerspectiveCamera: \"ViewToWorldScale\" does not belong there"},
        BrokenRule{"in_another_order", WithVectors(DIRECTION + POINT + UP),
                   "VisualizationInfo.PerspectiveCamera.CameraViewPoint: it is missing, or not in its place"},
        BrokenRule{"two_directions", WithVectors(POINT + DIRECTION + DIRECTION + UP),
                   "VisualizationInfo.PerspectiveCamera.CameraDirection: there are too many"},
        BrokenRule{"a_point_without_z", WithVectors("<CameraViewPoint><X>0</X><Y>0</Y></CameraViewPoint>"),
                   "VisualizationInfo.PerspectiveCamera.CameraViewPoint.Z: it is missing"},
        BrokenRule{"a_point_of_four",
                   WithVectors("<CameraViewPoint><X>0</X><Y>0</Y><Z>0</Z><W>1</W></CameraViewPoint>"),
                   "VisualizationInfo.PerspectiveCamera.CameraViewPoint: \"W\" does not belong there"},
        BrokenRule{"a_point_in_words", WithVectors("<CameraViewPoint>0 0 0</CameraViewPoint>"),
                   "VisualizationInfo.PerspectiveCamera.CameraViewPoint: there is text where none belongs"},
        BrokenRule{"an_angle_and_more", InRoot(Perspective(ANGLE + ASPECT + "<Near>1</Near>")),
                   "VisualizationInfo.PerspectiveCamera: \"Near\" does not belong there"}),
    NameOf);

constexpr const char* NO_ANGLE = "VisualizationInfo.PerspectiveCamera.FieldOfView: it is no number";
constexpr const char* NOT_BETWEEN =
    "VisualizationInfo.PerspectiveCamera.FieldOfView: it is not between 0 and 180 degrees";
constexpr const char* NO_SCALE =
    "VisualizationInfo.OrthogonalCamera.ViewToWorldScale: it is not above 0, or too large";
constexpr const char* NO_ASPECT =
    "VisualizationInfo.OrthogonalCamera.AspectRatio: it is not above 0, or that of no picture";

INSTANTIATE_TEST_SUITE_P(
    of_numbers, BrokenViewpoint,
    testing::Values(BrokenRule{"words", WithAngle("wide"), NO_ANGLE},
                    BrokenRule{"nothing", WithAngle(""), NO_ANGLE},
                    BrokenRule{"a_number_that_is_none", WithAngle("NaN"), NO_ANGLE},
                    BrokenRule{"infinity", WithAngle("INF"), NO_ANGLE},
                    BrokenRule{"a_number_no_double_holds", WithAngle("1e999"), NO_ANGLE},
                    BrokenRule{"a_comma", WithAngle("45,5"), NO_ANGLE},
                    BrokenRule{"hexadecimal", WithAngle("0x2D"), NO_ANGLE},
                    BrokenRule{"two_signs", WithAngle("+-45"), NO_ANGLE},
                    BrokenRule{"two_numbers", WithAngle("45 60"), NO_ANGLE},
                    BrokenRule{"a_number_with_an_element", WithAngle("45<b/>"), NO_ANGLE},
                    BrokenRule{"a_number_in_two_pieces", WithAngle("4<!-- -->5"), NO_ANGLE},
                    BrokenRule{"an_angle_of_0", WithAngle("0"), NOT_BETWEEN},
                    BrokenRule{"an_angle_below_0", WithAngle("-45"), NOT_BETWEEN},
                    BrokenRule{"an_angle_of_180", WithAngle("180"), NOT_BETWEEN},
                    BrokenRule{"a_scale_of_0", WithScale("0"), NO_SCALE},
                    BrokenRule{"a_scale_below_0", WithScale("-1"), NO_SCALE},
                    BrokenRule{"a_scale_too_large", WithScale("1e300"), NO_SCALE},
                    BrokenRule{"an_aspect_of_0", WithAspect("0"), NO_ASPECT},
                    BrokenRule{"an_aspect_below_0", WithAspect("-1.5"), NO_ASPECT},
                    BrokenRule{"an_aspect_too_large", WithAspect("1e300"), NO_ASPECT}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    of_vectors, BrokenViewpoint,
    testing::Values(BrokenRule{"a_direction_without_length",
                               WithVectors(POINT + VectorText("CameraDirection", "0", "0", "0") + UP),
                               "VisualizationInfo.PerspectiveCamera.CameraDirection: it has no length"},
                    BrokenRule{"an_up_without_length",
                               WithVectors(POINT + DIRECTION + VectorText("CameraUpVector", "0", "-0", "0")),
                               "VisualizationInfo.PerspectiveCamera.CameraUpVector: it has no length"},
                    BrokenRule{
                        "an_up_along_the_direction",
                        WithVectors(POINT + DIRECTION + VectorText("CameraUpVector", "0", "-2", "0")),
                        "VisualizationInfo.PerspectiveCamera.CameraUpVector: it lies along the direction"},
                    BrokenRule{"a_point_too_far_away",
                               WithVectors(VectorText("CameraViewPoint", "1e200", "0", "0") + DIRECTION + UP),
                               "VisualizationInfo.PerspectiveCamera.CameraViewPoint: it is too far away"}),
    NameOf);

std::string Repeat(const std::string& text, int count) {
  std::string all;
  all.reserve(text.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

constexpr const char* NO_ELEMENT = "it is no XML: there is something beside its element";
constexpr const char* DOCUMENT_TYPE = "it has a document type, which none of these files needs";

INSTANTIATE_TEST_SUITE_P(
    of_xml, BrokenViewpoint,
    testing::Values(
        BrokenRule{"nothing_at_all", "", "line 1: it is no XML"},
        BrokenRule{"words_alone", "view", "line 1: it is no XML"},
        BrokenRule{"json", "{\"views\": []}", "line 1: it is no XML"},
        BrokenRule{"cut_off", "<VisualizationInfo>\n<PerspectiveCamera>\n", "line 2: it is no XML"},
        BrokenRule{"two_elements", InRoot(Perspective()) + "<VisualizationInfo/>", NO_ELEMENT},
        BrokenRule{"a_name_of_two_lines", "<a&#10;b/>", "line 1: it is no XML"},
        BrokenRule{"a_long_name", "<" + std::string(500, 'x') + "/>",
                   "it is no viewpoint, but \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\""},
        BrokenRule{"a_name_of_other_letters", "<\xC3\xA4/>", "it is no viewpoint, but \"??\""},
        BrokenRule{"a_document_type", "<!DOCTYPE VisualizationInfo>" + InRoot(Perspective()).substr(39),
                   DOCUMENT_TYPE},
        BrokenRule{
            "entities_by_the_million",
            "<!DOCTYPE b [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
            "\"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">]><VisualizationInfo>&c;</VisualizationInfo>",
            DOCUMENT_TYPE},
        BrokenRule{
            "a_file_from_elsewhere",
            "<!DOCTYPE b [<!ENTITY a SYSTEM \"file:///etc/passwd\">]><VisualizationInfo Guid=\"&a;\"/>",
            DOCUMENT_TYPE},
        BrokenRule{"elements_by_the_hundred_thousand", Repeat("<a>", 500'000), "line 1: it is no XML"},
        BrokenRule{"cameras_by_the_hundred_thousand",
                   InRoot(Repeat("<PerspectiveCamera>", 100'000) + Repeat("</PerspectiveCamera>", 100'000)),
                   "VisualizationInfo.PerspectiveCamera: \"PerspectiveCamera\" does not belong there"},
        BrokenRule{"too_large", std::string(zovhost::LARGEST_BCF_VIEWPOINT + 1, ' '), "it is too large"}),
    NameOf);

TEST(BcfViewpointTest, components_may_be_deep) {
  ParseWhole(InRoot("<Components>" + Repeat("<a>", 200'000) + Repeat("</a>", 200'000) + "</Components>" +
                    Perspective()));
}

// ---- damage ----

TEST(DamagedViewpoints, each_is_read_or_refused_in_one_line) {
  Random random;
  const std::string texts[] = {
      InRoot("<Components><Selection/></Components>" + Perspective(ANGLE + ASPECT)),
      InRoot(Orthogonal() + "<Lines/><ClippingPlanes/>"),
  };
  const std::string pieces[] = {"<",   ">",     "/",   "\"",   "&", "&#0;", "<!--", "<![CDATA[",
                                "]]>", "1e308", "NaN", "\xFF", "-", "<X>",  "</X>", "Guid",
                                "\n",  "<?",    "",    "\x01", "0", "180",  "&lt;", "&#x110000;"};
  int read = 0;
  for (int i = 0; i < 4000; ++i) {
    std::string damaged = random.OneOf(texts);
    for (int wounds = random.Integer(1, 3); wounds > 0; --wounds) {
      const auto at = static_cast<std::size_t>(random.Integer(0, static_cast<int>(damaged.size())));
      const auto length = static_cast<std::size_t>(random.Integer(0, 12));
      damaged.replace(at, length, random.OneOf(pieces));
    }
    BcfViewpoint viewpoint;
    std::string error;
    const bool good = ParseBcfViewpoint(damaged, viewpoint, error);
    EXPECT_EQ(good, error.empty()) << damaged;
    EXPECT_EQ(error.find_first_of("\r\n"), std::string::npos) << error;
    if (!good) continue;
    ++read;
    CameraParameters camera;
    EXPECT_EQ(CameraFromBcf(viewpoint, {}, 10.0, camera), viewpoint.camera != Camera::None) << damaged;
    if (viewpoint.camera == Camera::None || viewpoint.guid.empty() || viewpoint.aspectRatio == 0.0) continue;
    ExpectSame(ParseWhole(FormatWhole(viewpoint)), viewpoint);
  }
  EXPECT_GT(read, 50) << "a digit may well be another";
  EXPECT_LT(read, 3000);
}

TEST(DamagedViewpoints, one_that_is_cut_off_anywhere_is_refused) {
  const std::string text = InRoot(Perspective());
  for (std::size_t size = 0; size + 2 < text.size(); ++size) {
    BcfViewpoint viewpoint;
    std::string error;
    EXPECT_FALSE(ParseBcfViewpoint(text.substr(0, size), viewpoint, error)) << size;
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
  }
}

// ---- round trips ----

/// Upright or tilted, of any proportions.
CameraParameters RandomCamera(Random& random) {
  CameraParameters camera;
  camera.eye = random.Point(1e4);
  camera.centre = camera.eye + random.Direction() * random.Magnitude(0.01, 1e4);
  const Vector3 forward = (camera.centre - camera.eye).Normalize();
  Vector3 up = random.Direction();
  while (forward.Cross(up).Length() < 0.1) up = random.Direction();
  camera.up = (up - forward * up.Dot(forward)).Normalize();
  camera.pivot = camera.centre;
  const double aspect = random.Magnitude(0.25, 4.0);
  const double tangent = std::tan(random.Uniform(5.0, 75.0) * Math::DEG_TO_RAD);
  camera.SetVerticalFOV(std::atan(tangent) * Math::RAD_TO_DEG);
  camera.SetHorizontalFOV(std::atan(tangent * aspect) * Math::RAD_TO_DEG);
  camera.ortho_height = random.Magnitude(1e-3, 1e5);
  camera.ortho_width = camera.ortho_height * aspect;
  const bool parallel = random.Coin();
  camera.projection_type = parallel ? CameraParameters::ProjectionType::Orthographic
                                    : CameraParameters::ProjectionType::Perspective;
  return camera;
}

TEST(BcfRoundTrips, a_camera_comes_back_in_both_projections_on_every_axis) {
  Random random;
  const Vector3 ups[] = {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {0, -1, 0}, {0, 0, -1}};
  for (int i = 0; i < 2000; ++i) {
    const CameraParameters camera = RandomCamera(random);
    const Vector3 up = random.OneOf(ups);
    const ModelAxes axes = {up, zovhost::ChooseFront(up)};
    BcfViewpoint viewpoint;
    viewpoint.guid = zovhost::MakeGuid();
    std::string error;
    ASSERT_TRUE(CameraToBcf(camera, axes, viewpoint, error)) << error;
    const BcfViewpoint read = ParseWhole(FormatWhole(viewpoint));
    ExpectSame(read, viewpoint);

    CameraParameters back;
    const double distance = (camera.centre - camera.eye).Length();
    ASSERT_TRUE(CameraFromBcf(read, axes, distance, back));
    // Axes only change places. A unit vector is rounded some ten times, of which the distance makes a length.
    const double near = 16.0 * ULP * (camera.eye.Length() + distance);
    EXPECT_EQ(back.eye, camera.eye);
    EXPECT_LE((back.centre - camera.centre).Length(), near);
    EXPECT_LE((back.up - camera.up).Length(), 16.0 * ULP / 0.1);
    EXPECT_EQ(back.projection_type, camera.projection_type);
    if (camera.IsOrthographic()) {
      EXPECT_EQ(back.ortho_height, camera.ortho_height);
      EXPECT_NEAR(back.ortho_width, camera.ortho_width, 4.0 * ULP * camera.ortho_width);
    } else {
      // The tangent of 75 degrees is steep, and that of the width up to four times as much: by its derivative
      // a rounding of the angle counts for some 60 times as much, and comes back as little.
      EXPECT_NEAR(back.top_fov, camera.top_fov, 16.0 * ULP * 90.0);
      EXPECT_NEAR(back.right_fov, camera.right_fov, 128.0 * ULP * 90.0);
    }
  }
}

TEST(BcfRoundTrips, any_axes_are_turned_back) {
  Random random;
  for (int i = 0; i < 500; ++i) {
    const CameraParameters camera = RandomCamera(random);
    const Vector3 up = random.Direction();
    const ModelAxes axes = {up, zovhost::ChooseFront(up)};
    BcfViewpoint viewpoint;
    std::string error;
    ASSERT_TRUE(CameraToBcf(camera, axes, viewpoint, error)) << error;
    CameraParameters back;
    const double distance = (camera.centre - camera.eye).Length();
    ASSERT_TRUE(CameraFromBcf(viewpoint, axes, distance, back));
    // The axes are perpendicular to some ten roundings.
    const double near = 64.0 * ULP * (camera.eye.Length() + distance);
    EXPECT_LE((back.eye - camera.eye).Length(), near);
    EXPECT_LE((back.centre - camera.centre).Length(), near);
  }
}

// ---- where it is ----

TEST(BcfCameraTest, a_model_on_z_has_the_coordinates_of_its_viewpoints) {
  CameraParameters camera;
  ASSERT_TRUE(CameraFromBcf(ParseWhole(InRoot(Perspective(ANGLE + ASPECT))), {}, 8.0, camera));
  EXPECT_EQ(camera.eye, Vector3(1, -2.5, 30));
  EXPECT_EQ(camera.centre, Vector3(1, 5.5, 30));
  EXPECT_EQ(camera.pivot, camera.centre);
  EXPECT_EQ(camera.up, Vector3(0, 0, 1));
  EXPECT_NEAR(camera.GetVerticalFOV(), 30.0, 1e-12);
  EXPECT_NEAR(std::tan(camera.GetHorizontalFOV() * Math::DEG_TO_RAD), 1.5 * std::tan(30.0 * Math::DEG_TO_RAD),
              1e-12);
}

TEST(BcfCameraTest, a_model_on_y_is_laid_over) {
  const Vector3 up(0, 1, 0);
  CameraParameters camera;
  ASSERT_TRUE(CameraFromBcf(ParseWhole(InRoot(Perspective())), {up, zovhost::ChooseFront(up)}, 8.0, camera));
  EXPECT_EQ(camera.eye, Vector3(1, 30, 2.5));
  EXPECT_EQ(camera.centre, Vector3(1, 30, -5.5)) << "north is away from the front";
  EXPECT_EQ(camera.up, up);
}

TEST(BcfCameraTest, without_proportions_a_view_is_as_wide_as_high) {
  CameraParameters camera;
  ASSERT_TRUE(CameraFromBcf(ParseWhole(InRoot(Orthogonal())), {}, 8.0, camera));
  EXPECT_TRUE(camera.IsOrthographic());
  EXPECT_EQ(camera.ortho_width, 12.5);
  EXPECT_EQ(camera.ortho_height, 12.5);
}

TEST(BcfCameraTest, what_stands_for_nothing_is_refused) {
  const BcfViewpoint good = ParseWhole(InRoot(Perspective()));
  CameraParameters camera;
  EXPECT_FALSE(CameraFromBcf(BcfViewpoint(), {}, 1.0, camera));
  EXPECT_FALSE(CameraFromBcf(good, {}, 0.0, camera));
  EXPECT_FALSE(CameraFromBcf(good, {}, std::numeric_limits<double>::infinity(), camera));
  EXPECT_FALSE(CameraFromBcf(good, {{0, 0, 2}, {0, -1, 0}}, 1.0, camera));
  EXPECT_FALSE(CameraFromBcf(good, {{0, 0, 1}, {0, 0, 1}}, 1.0, camera));
  EXPECT_EQ(camera.eye, CameraParameters().eye);
}

TEST(BcfCameraTest, a_camera_that_no_viewpoint_can_tell_is_refused) {
  Random random;
  CameraParameters camera = RandomCamera(random);
  camera.projection_type = CameraParameters::ProjectionType::Perspective;
  BcfViewpoint viewpoint;
  std::string error;
  camera.left_fov = camera.right_fov * 0.5;
  EXPECT_FALSE(CameraToBcf(camera, {}, viewpoint, error));
  EXPECT_EQ(error, "the view is not the same to both sides of its axis, which a viewpoint cannot say");
  camera.centre = camera.eye;
  EXPECT_FALSE(CameraToBcf(camera, {}, viewpoint, error));
  EXPECT_EQ(error, "the camera shows nothing");
}

TEST(BcfCameraTest, what_would_not_be_read_is_not_written) {
  BcfViewpoint good = ParseWhole(InRoot(Perspective(ANGLE + ASPECT)));
  std::string xml = "before";
  std::string error;
  const auto expectRefused = [&](const BcfViewpoint& broken) {
    error.clear();
    EXPECT_FALSE(FormatBcfViewpoint(broken, xml, error));
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(xml, "before");
  };
  for (double BcfViewpoint::*const number : {&BcfViewpoint::fieldOfView, &BcfViewpoint::aspectRatio}) {
    for (const double wrong : {0.0, -1.0, std::nan(""), 1e300}) {
      BcfViewpoint broken = good;
      broken.*number = wrong;
      expectRefused(broken);
    }
  }
  BcfViewpoint broken = good;
  broken.guid.clear();
  expectRefused(broken);
  broken = good;
  broken.cameraDirection = {0, 0, std::nan("")};
  expectRefused(broken);
  broken = good;
  broken.camera = Camera::None;
  expectRefused(broken);
}

}  // namespace
