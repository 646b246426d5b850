/* Loaded by the tests to prove that a library really was loaded: its export answers 42. */
__attribute__((visibility("default"))) int ZnTestSharedLibraryAnswer(void)
{
	return 42;
}
