namespace quillet { int UiPlaceholder() { return 0; } }
