// Placeholder until the firmware model lands.
namespace quillet::sim { int FirmwarePlaceholder() { return 0; } }
