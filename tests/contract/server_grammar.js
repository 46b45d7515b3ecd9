// SPDX-License-Identifier: MIT
// node server_grammar.js GRAMMAR FILE: reads each line of FILE as a statement of SQL Server by the grammar in the folder of
// npm packages GRAMMAR. Says where it cannot, and ends with how many it could.
const fs = require('fs');
const [packages, file] = process.argv.slice(2);
const antlr = require(packages + '/antlr4');
const parsers = packages + '/@dbml/core/lib/parse/ANTLR/parsers/mssql/';
const Lexer = require(parsers + 'TSqlLexer').default;
const Parser = require(parsers + 'TSqlParser').default;

function firstError(statement) {
  let error = null;
  const ignore = () => {};
  const listener = {
    syntaxError: (recognizer, symbol, line, column, message) => { error = error || column + ': ' + message; },
    reportAmbiguity: ignore, reportAttemptingFullContext: ignore, reportContextSensitivity: ignore,
  };
  const lexer = new Lexer(new antlr.CharStream(statement, true));
  lexer.removeErrorListeners();
  lexer.addErrorListener(listener);
  const parser = new Parser(new antlr.CommonTokenStream(lexer));
  parser.removeErrorListeners();
  parser.addErrorListener(listener);
  parser.tsql_file();
  return error;
}

let read = 0;
for (const statement of fs.readFileSync(file, 'utf8').split('\n').filter((line) => line !== '')) {
  const error = firstError(statement);
  if (error === null) ++read;
  else console.log(error + '\n  ' + statement);
}
console.log('read ' + read);
