// Exits at once with status 0, whatever it is asked.
int main()
{
    return 0;
}
