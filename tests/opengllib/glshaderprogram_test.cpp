// Compiling and linking programs: every message, and the look-up of variables.
#include "glshaderprogram.h"

#include "bodyfiles.h"
#include "glcontext.h"

namespace {
const char* const kVertex = "uniform float shift; attribute float weight; varying float w;\n"
                            "void main() { w = weight; gl_Position = gl_Vertex + vec4(shift); }\n";
const char* const kFragment = "varying float w; void main() { gl_FragColor = vec4(w); }\n";

struct Sources {
    Sources(const char* vertex, const char* fragment) : vertex_(vertex), fragment_(fragment) {}
    std::string vertex() const { return vertex_.path(); }
    std::string fragment() const { return fragment_.path(); }

private:
    TemporaryFile vertex_;
    TemporaryFile fragment_;
};
} // namespace

TEST(GLShaderProgram, LinksAndFindsItsVariables) {
    const GlContext context(4, 4);
    ASSERT_TRUE(context.isUsable());
    const Sources sources(kVertex, kFragment);
    GLShaderProgram program;
    EXPECT_EQ(reportOf([&] { ASSERT_TRUE(program.Init(sources.vertex(), sources.fragment())); }), "");
    EXPECT_NE(program.program(), 0U);
    EXPECT_EQ(
        reportOf([&] {
            EXPECT_GE(program.GetUniformVariable("shift"), 0);
            EXPECT_GE(program.GetAttribLocation("weight"), 0);
        }),
        "");
    for (int call = 0; call < 2; ++call)
        EXPECT_EQ(
            reportOf([&] { EXPECT_EQ(program.GetUniformVariable("missing"), -1); }),
            "glshaderprogram GetUniformVariable: No variable named \"missing\" exists.");
    EXPECT_EQ(
        reportOf([&] { EXPECT_EQ(program.GetAttribLocation("shift"), -1); }),
        "glshaderprogram GetAttribLocation: No variable named \"shift\" exists.");

    GLint current = 0;
    program.Activate();
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    EXPECT_EQ(static_cast<unsigned int>(current), program.program());
    GLShaderProgram::Deactivate();
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    EXPECT_EQ(current, 0);
}

TEST(GLShaderProgram, AVertexShaderAloneAndNoShaderAtAllLink) {
    const GlContext context(4, 4);
    ASSERT_TRUE(context.isUsable());
    const Sources sources(kVertex, kFragment);
    EXPECT_EQ(
        reportOf([&] {
            EXPECT_TRUE(GLShaderProgram().Init(sources.vertex(), ""));
            EXPECT_TRUE(GLShaderProgram().Init("", ""));
        }),
        "");
}

TEST(GLShaderProgram, ReportsEachFault) {
    const GlContext context(4, 4);
    ASSERT_TRUE(context.isUsable());
    const Sources good(kVertex, kFragment);
    const Sources broken("void main() { nonsense }", "void main() { nonsense }");
    const Sources apart("varying vec3 w; void main() { w = vec3(1.0); gl_Position = gl_Vertex; }", kFragment);
    const struct {
        std::string vertex;
        std::string fragment;
        const char* report;
    } rows[] = {
        {"", good.fragment(), "Fragment shader creation failed."},
        {broken.vertex(), good.fragment(), "Vertex shader compilation failed."},
        {good.vertex(), broken.fragment(), "Fragment shader compilation failed."},
        {apart.vertex(), apart.fragment(), "Shader link failed."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(
            reportOf([&] { EXPECT_FALSE(GLShaderProgram().Init(row.vertex, row.fragment)); }),
            std::string("glshaderprogram Init: ") + row.report);

    const auto expectTwoLines = [](const std::string& printed, const std::string& second) {
        EXPECT_NE(printed.find("No source code found for shader /no/such."), std::string::npos) << printed;
        EXPECT_NE(printed.find("function \"LoadSourceFiles\""), std::string::npos) << printed;
        EXPECT_TRUE(printed.ends_with(second + "\n")) << printed;
    };
    testing::internal::CaptureStderr();
    EXPECT_FALSE(GLShaderProgram().Init("/no/such.vert", good.fragment()));
    expectTwoLines(testing::internal::GetCapturedStderr(), "Unable to load vertex shader \"/no/such.vert\".");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(GLShaderProgram().Init(good.vertex(), "/no/such.frag"));
    expectTwoLines(testing::internal::GetCapturedStderr(), "Unable to load fragment shader \"/no/such.frag\".");
}

TEST(GLShaderProgram, WithoutShadersInTheDriverEveryStepReportsAndNothingIsCalled) {
    const auto createShader = glCreateShader;
    glCreateShader = nullptr;
    const Sources sources(kVertex, kFragment);
    const struct {
        std::string vertex;
        std::string fragment;
        const char* report;
    } rows[] = {
        {sources.vertex(), sources.fragment(), "Vertex shader creation failed."},
        {"", sources.fragment(), "Fragment shader creation failed."},
        {"", "", "glCreateProgram() failed."},
    };
    for (const auto& row : rows) {
        GLShaderProgram program;
        EXPECT_EQ(
            reportOf([&] { EXPECT_FALSE(program.Init(row.vertex, row.fragment)); }),
            std::string("glshaderprogram Init: ") + row.report);
        program.Activate();
        EXPECT_EQ(
            reportOf([&] { EXPECT_EQ(program.GetUniformVariable("shift"), -1); }),
            "glshaderprogram GetUniformVariable: No variable named \"shift\" exists.");
    }
    GLShaderProgram::Deactivate();
    glCreateShader = createShader;
}
