// The media pipeline as one of the platform's component services. Every
// program that builds graphs starts it with the others (AfxOleInit), so a
// pipeline library that cannot start, or lacks the elements every graph is
// made of, stops the program at start-up with its message rather than
// failing the first medium.
#pragma once

// Starts the pipeline library and checks that the elements the graphs are
// built from are installed; false when either fails.
bool StartPipelineService();
