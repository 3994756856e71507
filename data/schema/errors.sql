-- The error journal.
CREATE TABLE "Error" (
  errno SMALLINT,
  errdesc TEXT(100),
  errmodule TEXT(50),
  ErrProgram TEXT(50),
  errfcn TEXT(50),
  errdate TEXT(10),
  errTime TEXT(5)
);
