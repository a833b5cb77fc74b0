#include "AppMain.h"

int main(int argc, char **argv)
{
    // AgentRunner() runs the engine at the path fixed when the app was built.
    return runAgentApp(argc, argv, ZQBAgentApplication::Options{AgentRunner(), {}});
}
