-- A SQLite file of another program: the same tables without our application id.
PRAGMA application_id = 0;
