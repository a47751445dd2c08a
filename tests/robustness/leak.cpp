/// Forgets a block of memory, as no test may: where the sanitizer build does not complain of this
/// program, its silence about the tests says nothing.
int main()
{
    int* volatile forgotten = new int[100];
    forgotten = nullptr;
    return forgotten == nullptr ? 0 : 1;
}
