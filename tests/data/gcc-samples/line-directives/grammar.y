%%
sum: NUMBER        { $$ = $1; }
   | sum '+' NUMBER {
         $$ = $1 + $3; //= run
     }
   | sum '-' NUMBER {
         $$ = $1 - $3; //= red
     }
