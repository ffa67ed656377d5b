' The smallest host: a table in the script's memory, and the user picks one of its articles. Run it with cscript.
Option Explicit

Class Celda
    Public Name
    Public Value
End Class

Class Registro ' the fields of one record
    Public Celdas
    Public Property Get Count : Count = UBound(Celdas) + 1 : End Property
    Public Function Item(numero) : Set Item = Celdas(numero) : End Function
End Class

Class Tabla ' the data class, which is its own record set
    Public Filas
    Public AbsolutePosition
    Public Property Get sClassName : sClassName = "articulos" : End Property
    Public Property Get RecordCount : RecordCount = UBound(Filas) + 1 : End Property
    Public Property Get existenregistros : existenregistros = RecordCount > 0 : End Property
    Public Property Get BOF : BOF = AbsolutePosition < 1 : End Property
    Public Property Get EOF : EOF = AbsolutePosition > RecordCount : End Property
    Public Property Get Fields : Set Fields = Filas(AbsolutePosition - 1) : End Property
    Public Sub MoveFirst : AbsolutePosition = 1 : End Sub
    Public Sub MoveLast : AbsolutePosition = RecordCount : End Sub
    Public Sub MoveNext : AbsolutePosition = AbsolutePosition + 1 : End Sub
    Public Sub MovePrevious : AbsolutePosition = AbsolutePosition - 1 : End Sub
    Public Sub Requery(consulta) : MoveFirst : End Sub
    Public Sub FindRecord(texto) : MoveFirst : End Sub
    Public Sub AplyFilter(filtro) : MoveFirst : End Sub
End Class

Function Articulo(codigo, nombre)
    Dim uno, otro
    Set uno = New Celda : uno.Name = "Codigo" : uno.Value = codigo
    Set otro = New Celda : otro.Name = "Nombre" : otro.Value = nombre
    Set Articulo = New Registro
    Articulo.Celdas = Array(uno, otro)
End Function

Dim articulos
Set articulos = New Tabla
articulos.Filas = Array(Articulo("A-1", "Tornillo"), Articulo("A-2", "Tuerca"), Articulo("A-3", "Arandela"))

Class Pantalla ' the screen: its control, and the sink that gets the answer
    Public Text
    Public Sub AceptarSeleccion(indice, ctl, valor) : Text = valor : End Sub
End Class

Dim campo
Set campo = New Pantalla
CreateObject("Tamvelo.ClsShowSerch").ShowSelec campo, articulos, campo
WScript.Echo "Elegido: " & campo.Text
