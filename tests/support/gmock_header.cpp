// The program that compiles the header of GoogleMock for all test programs.

int main()
{
    return 0;
}
