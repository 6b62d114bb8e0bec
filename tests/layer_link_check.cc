// Linked with every object file of one engine layer and only the libraries that layer
// declares (see src/CMakeLists.txt): if the layer calls into a layer above it, this program
// does not link. It is never run.
int main() { return 0; }
