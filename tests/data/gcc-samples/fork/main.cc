// The child's counts are added to the parent's when each of them ends.
#include <sys/wait.h>
#include <unistd.h>

static int inChild()
{
    return 7; //= run
}

static int inParent(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1; //= part
}

int main()
{
    const pid_t child = fork(); //= run
    if (child == 0) {           //= run
        return inChild();       //= run
    }
    if (child < 0) { //= run
        return 2;    //= red
    }
    int status = 0;                      //= run
    waitpid(child, &status, 0);          //= run
    return inParent(status) == 7 ? 0 : 1; //= run
}
