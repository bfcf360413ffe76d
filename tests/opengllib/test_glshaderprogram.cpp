// Compiling and linking programs: every message, and the look-up of variables.
#include "glshaderprogram.h"

#include "bodyfiles.h"
#include "capturedoutput.h"
#include "glcontext.h"
#include "rows.h"

using namespace sorvane;

namespace {
const char* const kVertex = "uniform float shift; attribute float weight; varying float w;\n"
                            "void main() { w = weight; gl_Position = gl_Vertex + vec4(shift); }\n";
const char* const kFragment = "varying float w; void main() { gl_FragColor = vec4(w); }\n";

class GLShaderProgramTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(context_.isUsable()); }

    static std::string reportOfInit(const std::string& vertex, const std::string& fragment) {
        return reportOf([&] { EXPECT_FALSE(GLShaderProgram().Init(vertex, fragment)); });
    }
    static unsigned int currentProgram() {
        GLint current = 0;
        glGetIntegerv(GL_CURRENT_PROGRAM, &current);
        return static_cast<unsigned int>(current);
    }

    const GlContext context_{4, 4};
    const TemporaryFile vertexFile_{kVertex};
    const TemporaryFile fragmentFile_{kFragment};
    const std::string& vertex_ = vertexFile_.path();
    const std::string& fragment_ = fragmentFile_.path();
};
} // namespace

TEST_F(GLShaderProgramTest, LinksAndFindsItsVariables) {
    GLShaderProgram program;
    EXPECT_EQ(
        reportOf([&] {
            ASSERT_TRUE(program.Init(vertex_, fragment_));
            EXPECT_GE(program.GetUniformVariable("shift"), 0);
            EXPECT_GE(program.GetAttribLocation("weight"), 0);
            EXPECT_TRUE(GLShaderProgram().Init(vertex_, ""));
            EXPECT_TRUE(GLShaderProgram().Init("", ""));
        }),
        "");
    for (int call = 0; call < 2; ++call)
        EXPECT_EQ(
            reportOf([&] { EXPECT_EQ(program.GetUniformVariable("missing"), -1); }),
            "glshaderprogram GetUniformVariable: No variable named \"missing\" exists.");
    EXPECT_EQ(
        reportOf([&] { EXPECT_EQ(program.GetAttribLocation("shift"), -1); }),
        "glshaderprogram GetAttribLocation: No variable named \"shift\" exists.");

    program.Activate();
    EXPECT_NE(currentProgram(), 0U);
    EXPECT_EQ(currentProgram(), program.program());
    GLShaderProgram::Deactivate();
    EXPECT_EQ(currentProgram(), 0U);
}

TEST_F(GLShaderProgramTest, ReportsEachFault) {
    const TemporaryFile broken("void main() { nonsense }");
    const TemporaryFile apart("varying vec3 w; void main() { w = vec3(1.0); gl_Position = gl_Vertex; }");
    for (const auto& [vertex, fragment, report] : Rows<std::string, std::string, std::string>{
             {"", fragment_, "Fragment shader creation failed."},
             {broken.path(), fragment_, "Vertex shader compilation failed."},
             {vertex_, broken.path(), "Fragment shader compilation failed."},
             {apart.path(), fragment_, "Shader link failed."}})
        EXPECT_EQ(reportOfInit(vertex, fragment), "glshaderprogram Init: " + report);

    // The compiler's own words, for who asks for them.
    ::setenv("SORVANE_DEBUG", "1", 1);
    const std::string words = outputOf([&] { EXPECT_FALSE(GLShaderProgram().Init(broken.path(), "")); });
    ::unsetenv("SORVANE_DEBUG");
    EXPECT_NE(words.find(broken.path() + ":\n"), std::string::npos) << words;
    EXPECT_NE(words.find("error"), std::string::npos) << words;

    // Two lines: what the shader file says comes first.
    for (const auto& [vertex, fragment, kind] : Rows<std::string, std::string, std::string>{
             {"/no/such", fragment_, "vertex"}, {vertex_, "/no/such", "fragment"}}) {
        const std::string printed = reportOfInit(vertex, fragment);
        EXPECT_NE(printed.find("No source code found for shader /no/such."), std::string::npos) << printed;
        EXPECT_TRUE(printed.ends_with("Unable to load " + kind + " shader \"/no/such\".")) << printed;
    }
}

TEST_F(GLShaderProgramTest, WithoutShadersInTheDriverEveryStepReportsAndNothingIsCalled) {
    const auto createShader = glCreateShader;
    glCreateShader = nullptr;
    for (const auto& [vertex, fragment, report] : Rows<std::string, std::string, std::string>{
             {vertex_, fragment_, "Vertex shader creation failed."}, {"", "", "glCreateProgram() failed."}})
        EXPECT_EQ(reportOfInit(vertex, fragment), "glshaderprogram Init: " + report);
    const GLShaderProgram program;
    program.Activate();
    EXPECT_EQ(
        reportOf([&] { EXPECT_EQ(program.GetUniformVariable("shift"), -1); }),
        "glshaderprogram GetUniformVariable: No variable named \"shift\" exists.");
    GLShaderProgram::Deactivate();
    glCreateShader = createShader;
}
