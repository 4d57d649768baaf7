// As a parser generator writes it: the actions stand in the grammar, the rest here.
int parse(const char* text) //= run
{
    int value = 0;          //= run
    for (; *text != '\0'; ++text) { //= run
        switch (*text) {    //= run
        case '+':
#line 4 "grammar.y"
            value = value + (text[1] - '0');
#line 11 "parser.cc"
            ++text;
            break;
        case '-':
#line 7 "grammar.y"
            value = value - (text[1] - '0');
#line 17 "parser.cc"
            ++text;
            break;
        default:
            value = *text - '0';
        }
    }
    return value;
}
